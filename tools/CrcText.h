#pragma once

#include <cstdint>
#include <string>

namespace tools {

/// A CRC-32 as the probe writes it: eight hexadecimal digits.
inline std::string CrcText(std::int32_t crc) {
    std::string text(8, '0');
    auto rest = static_cast<std::uint32_t>(crc);
    for (std::size_t place = text.size(); place-- > 0; rest >>= 4)
        text[place] = "0123456789abcdef"[rest & 15];
    return text;
}

} // namespace tools
