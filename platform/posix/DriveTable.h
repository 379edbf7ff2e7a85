#pragma once

#include "platform/Drives.h"

#include <string>
#include <vector>

namespace platform {

/// One drive: its letter, its type and the host folder that is its root.
struct DriveEntry {
    char letter = 0;
    DriveType type = DriveType::kUnknown;
    std::string root; ///< absolute; no trailing slash except for "/"
};

/// The drives that exist now. Cheap to call: the mounts are read again only after one has come or gone.
const std::vector<DriveEntry>& DriveTable();

/// The drive with this letter, in either case; null when there is none. Valid until the next call of
/// DriveTable().
const DriveEntry* FindDrive(char letter);

/// Whether the table is set from outside (`PELLARION_DRIVES`).
bool IsDriveTableSet();

} // namespace platform
