#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace codec {

/// Copies `length` bytes to `to` from `distance` bytes before it, and writes no other. Where they overlap,
/// the recent bytes repeat.
inline void CopyMatch(std::uint8_t* to, std::size_t distance, std::size_t length) {
    assert(distance != 0);
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

/// Copies in steps of 32 bytes until `end` is reached or passed, from at least 16 bytes before.
inline void CopyMatchChunks(std::uint8_t* to, const std::uint8_t* from, const std::uint8_t* end) {
    do {
        std::memcpy(to, from, 16);
        std::memcpy(to + 16, from + 16, 16);
        to += 32;
        from += 32;
    } while (to < end);
}

/// Copies as CopyMatch does, for distances of at most 15. Writes up to seven bytes more than asked, and at
/// least eight.
inline void CopyNear(std::uint8_t* to, std::size_t distance, std::size_t length) {
    assert(distance != 0 && distance < 16);
    const std::uint8_t* from = to - distance;
    const std::uint8_t* const end = to + length;
    if (distance >= 8) {
        do {
            std::memcpy(to, from, 8);
            to += 8;
            from += 8;
        } while (to < end);
        return;
    }
    // The pattern as often as it fits in eight bytes.
    std::uint8_t pattern[8];
    for (std::size_t i = 0; i < sizeof pattern; i++)
        // No distance is 0. NOLINTNEXTLINE(clang-analyzer-core.uninitialized.Assign)
        pattern[i] = i < distance ? from[i] : pattern[i - distance];
    const std::size_t step = sizeof pattern - sizeof pattern % distance;
    do {
        std::memcpy(to, pattern, sizeof pattern);
        to += step;
    } while (to < end);
}

} // namespace codec
