#pragma once

#include <string>
#include <string_view>

namespace platform {

// "C:\Pellarion" is the user's cache folder, unless the drive table is set by PELLARION_DRIVES.

/// The host folder that stands for it; empty when it is an ordinary folder of drive C:.
std::string WorkingFolderRoot();

/// Its path in this program's form.
std::string WorkingFolderPath();

/// Whether `name`, below the root of drive C:, names it.
bool IsWorkingFolderName(std::string_view name);

/// Whether "Pellarion" appears in this host folder although it is stored elsewhere.
bool HoldsWorkingFolder(const std::string& hostFolder);

} // namespace platform
