#pragma once

#include <string>

namespace bench {

/// Makes a folder of `count` files as they come in life: names of some length, twenty extensions, sizes and
/// times of all kinds. They take no room: their content is a hole.
void MakeManyFiles(const std::string& folder, int count);

} // namespace bench
