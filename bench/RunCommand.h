#pragma once

#include <string>
#include <vector>

namespace bench {

/// Runs a program, found by the path, without output; ends the bench when it fails.
void RunCommand(const std::vector<std::string>& words);

/// Runs it, not for timing. Returns the most memory that it held, in bytes, measured every millisecond.
std::size_t MemoryOf(const std::vector<std::string>& words);

/// Whether the program can be found.
bool HasCommand(const std::string& name);

} // namespace bench
