#pragma once

#include <string>
#include <vector>

namespace bench {

/// Runs a program, found by the path, without output; ends the bench when it fails. Answers the most memory
/// that it held, in bytes.
std::size_t RunCommand(const std::vector<std::string>& words);

/// Whether the program can be found.
bool HasCommand(const std::string& name);

} // namespace bench
