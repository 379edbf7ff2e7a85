#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace archive {

/// Copies `length` bytes to `to` from `distance` bytes before it, and writes no other. Where they overlap,
/// the recent bytes repeat.
inline void CopyMatch(std::uint8_t* to, std::size_t distance, std::size_t length) {
    // A copy of at most `distance` bytes does not overlap, and doubles what can be copied next.
    const std::uint8_t* const from = to - distance;
    while (length > distance) {
        std::memcpy(to, from, distance);
        to += distance;
        length -= distance;
        distance *= 2;
    }
    std::memcpy(to, from, length);
}

} // namespace archive
