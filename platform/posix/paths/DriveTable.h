#pragma once

#include "platform/DriveSetting.h"

#include <vector>

namespace platform {

/// The drives that exist now. Cheap to call: the mounts are read again only after one has come or gone.
const std::vector<DriveEntry>& DriveTable();

/// The drive with this letter, in either case; null when there is none. Valid until the next call of
/// DriveTable().
const DriveEntry* FindDrive(char letter);

} // namespace platform
