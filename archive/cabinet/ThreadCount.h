#pragma once

#include <algorithm>
#include <cstddef>
#include <thread>

namespace cabinet {

/// Threads that share the work of one call: one per processor, within what memory allows.
inline std::size_t ThreadCount() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, 8);
}

} // namespace cabinet
