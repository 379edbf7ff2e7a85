#pragma once

#include <string>
#include <vector>

namespace bench {

/// Runs 7zz with these arguments and a single thread, without output; ends the program when it fails.
void RunSevenZip(const std::vector<std::string>& arguments);

} // namespace bench
