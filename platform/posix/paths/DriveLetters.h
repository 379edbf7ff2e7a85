#pragma once

#include "platform/posix/paths/DriveTable.h"

#include <vector>

namespace platform {

/// Gives letters from D on, in order, to the drives that have none yet (0). A drive whose root was already in
/// the table `before` keeps the letter that it had there. Drives for which no letter remains are removed.
std::vector<DriveEntry> WithLetters(std::vector<DriveEntry> drives, const std::vector<DriveEntry>& before);

} // namespace platform
