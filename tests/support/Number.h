#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tests {

/// The lowest `size` bytes of a number, lowest byte first, as all three archive formats store them.
inline std::string Number(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (; size > 0; --size, value >>= 8)
        bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

} // namespace tests
