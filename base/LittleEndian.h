#pragma once

#include <bit>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Numbers as archive and image files store them: lowest byte first, at any address. The compiler turns each
// function into one load or store where the processor has that byte order. The caller has checked that the
// bytes are there.

namespace base {

/// Reads sizeof(Number) bytes from `bytes` on.
template <std::unsigned_integral Number>
inline Number LoadLittle(const std::uint8_t* bytes) {
    if constexpr (std::endian::native == std::endian::little) {
        Number value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    } else {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i)
            value |= std::uint64_t{bytes[i]} << (8 * i);
        return static_cast<Number>(value);
    }
}

inline std::uint16_t LoadLittle16(const std::uint8_t* bytes) {
    return LoadLittle<std::uint16_t>(bytes);
}

inline std::uint32_t LoadLittle32(const std::uint8_t* bytes) {
    return LoadLittle<std::uint32_t>(bytes);
}

inline std::uint64_t LoadLittle64(const std::uint8_t* bytes) {
    return LoadLittle<std::uint64_t>(bytes);
}

/// Writes the lowest `size` bytes of `value`, at most eight, from `bytes` on.
inline void StoreLittle(std::uint8_t* bytes, std::uint64_t value, std::size_t size) {
    assert(size <= sizeof value);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

inline void StoreLittle16(std::uint8_t* bytes, std::uint16_t value) {
    StoreLittle(bytes, value, sizeof value);
}

inline void StoreLittle32(std::uint8_t* bytes, std::uint32_t value) {
    StoreLittle(bytes, value, sizeof value);
}

} // namespace base
