#pragma once

#include "platform/posix/paths/DriveTable.h"

#include <vector>

namespace platform {

/// Gives the drives that have no letter yet (0) one from D on, in their order. A drive that was in the table
/// `before`, by its root, keeps the letter it had there; drives for which no letter is left are left out.
std::vector<DriveEntry> WithLetters(std::vector<DriveEntry> drives, const std::vector<DriveEntry>& before);

} // namespace platform
