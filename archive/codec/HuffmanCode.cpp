#include "archive/codec/HuffmanCode.h"

#include <cassert>

namespace codec {

bool HuffmanCode::Set(std::span<const std::uint8_t> lengths) {
    assert(lengths.size() <= symbols.size());
    count.fill(0);
    for (const std::uint8_t length : lengths)
        count[length]++;
    count[0] = 0;
    longest = kMostCodeBits;
    while (longest > 0 && count[longest] == 0)
        longest--;

    int left = 1;
    std::array<std::uint16_t, kMostCodeBits + 2> offset{};
    for (unsigned length = 1; length <= longest; length++) {
        left = left * 2 - count[length];
        if (left < 0)
            return false;
        offset[length + 1] = static_cast<std::uint16_t>(offset[length] + count[length]);
    }
    if (left != 0)
        return false;
    for (std::size_t symbol = 0; symbol < lengths.size(); symbol++)
        if (lengths[symbol] != 0)
            symbols[offset[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
    return true;
}

} // namespace codec
