#pragma once

#include "platform/Drives.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One drive: its letter, its type and the host folder that is its root.
struct DriveEntry {
    char letter = 0;
    DriveType type = DriveType::kUnknown;
    std::string root; ///< absolute, as the host writes it; no trailing separator except for "/"
};

/// Reads a drive table written as "C=fixed:/path;E=removable:/path". Parts of another form are left out. When
/// two drives have the same letter, the first counts.
std::vector<DriveEntry> ParseDriveSetting(std::string_view setting);

/// Whether the drive table is set from outside, by `PELLARION_DRIVES`: for tests, demos and fixed layouts.
bool IsDriveTableSet();

/// The drives of that setting. Valid until the setting changes.
const std::vector<DriveEntry>& SetDrives();

/// The drive with this letter, in either case; null when there is none.
const DriveEntry* FindSetDrive(char letter);

} // namespace platform
