#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

bool IsDriveLetter(char c);
char UpperDriveLetter(char c);

/// The components of a path between any of `separators`. Empty and "." components are left out. ".." removes
/// the component before it, if there is one.
std::vector<std::string> SplitComponents(std::string_view path, std::string_view separators);

} // namespace base
