#pragma once

#include <cstdlib>
#include <string>

namespace tests {

/// Runs a shell command, its output thrown away; true when it succeeds.
inline bool RunProgram(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

} // namespace tests
