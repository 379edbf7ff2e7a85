#pragma once

#include <string>

namespace platform {

inline constexpr int kCsidlPersonal = 5;          ///< the user's documents
inline constexpr int kCsidlDesktopDirectory = 16; ///< the user's desktop

/// Path of a shell special folder by its CSIDL number, without a last backslash; empty when there is none.
std::string GetSpecialFolderPath(int csidl);

} // namespace platform
