#pragma once

#include "DriveTable.h"

#include <string_view>
#include <vector>

namespace platform {

/// Reads a drive table written as "C=fixed:/path;E=removable:/path". Parts that are not of this form are left
/// out; the first of two drives with one letter counts.
std::vector<DriveEntry> ParseDriveSetting(std::string_view setting);

} // namespace platform
