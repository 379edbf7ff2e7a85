#pragma once

#include <cstddef>
#include <filesystem>

namespace bench {

/// Copies `count` text files of this machine's own system to `folder`, folders included, so chosen that they
/// are about `meanSize` bytes each; from the first again, in another folder, when they are too few. Returns
/// their bytes in all.
std::size_t MakeSourceTree(const std::filesystem::path& folder, std::size_t count, std::size_t meanSize);

} // namespace bench
