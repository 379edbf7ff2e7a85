#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ui {

/// Letters from "C" to "Z" whose drive is removable or fixed, in that order.
std::vector<std::string> GetDriveLetters();

/// "Remove" for a removable drive, "Fixed" for a fixed one, "donno" for any other.
std::string_view DriveTypeName(const std::string& letter);

/// Roots, such as "E:\", of the removable drives among GetDriveLetters.
std::vector<std::string> RemovableDriveRoots();

} // namespace ui
