#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

bool IsDriveLetter(char c);
char UpperDriveLetter(char c);

/// The components of a path between any of `separators`; empty and "." components are left out and ".." takes
/// the one before it away, never more than there is.
std::vector<std::string> SplitComponents(std::string_view path, std::string_view separators);

} // namespace base
