#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace support {

/// Bits of a byte array as a reducing method reads them, past its end as 0.
class PlainReduceBits {
  public:
    explicit PlainReduceBits(std::span<const std::uint8_t> input) : input_(input) {}

    unsigned ReadBits(unsigned n) {
        if (n == 0)
            return 0;
        if (bit_ == 0)
            byte_++;
        unsigned value = Byte() >> bit_;
        for (unsigned available = 8 - bit_; available < n; available += 8) {
            byte_++;
            value += Byte() << available;
        }
        bit_ = (bit_ + n) % 8;
        return value & ((1u << n) - 1);
    }

  private:
    unsigned Byte() const { return byte_ - 1 < input_.size() ? input_[byte_ - 1] : 0u; }

    std::span<const std::uint8_t> input_;
    std::size_t byte_ = 0; // one past the index, so that it can stand before the first
    unsigned bit_ = 0;
};

/// The reducing methods, decoded value by value and byte by byte as their description reads: the control for
/// the real decoder, and its measure.
inline std::vector<std::uint8_t> PlainUnreduce(std::span<const std::uint8_t> input, unsigned factor,
                                               std::size_t size) {
    static constexpr std::array<std::uint16_t, 33> kIndexBits = {
        0, 1, 1, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5};
    PlainReduceBits reader(input);
    std::array<std::uint16_t, 256> counts{};
    std::array<std::array<std::uint16_t, 33>, 256> sets{};
    for (unsigned j = 256; j-- > 0;) {
        counts[j] = static_cast<std::uint16_t>(std::min(reader.ReadBits(6), 32u));
        for (unsigned k = 0; k < counts[j]; k++)
            sets[j][k] = static_cast<std::uint16_t>(reader.ReadBits(8));
    }
    std::vector<std::uint8_t> output(size);
    const unsigned mask = (1u << (8 - factor)) - 1;
    unsigned last = 0;
    int state = 0;
    std::size_t length = 0;
    std::size_t distance = 0;
    for (std::size_t at = 0; at < size;) {
        unsigned c = 0;
        if (counts[last] == 0 || reader.ReadBits(1) == 1)
            c = reader.ReadBits(8);
        else
            c = sets[last][reader.ReadBits(kIndexBits[counts[last]])];
        last = c;
        switch (state) {
        case 0:
            if (c == 144)
                state = 1;
            else
                output[at++] = static_cast<std::uint8_t>(c);
            break;
        case 1:
            if (c == 0) {
                output[at++] = 144;
                state = 0;
            } else {
                length = c & mask;
                distance = std::size_t{c >> (8 - factor)} * 256;
                state = length == mask ? 2 : 3;
            }
            break;
        case 2:
            length += c;
            state = 3;
            break;
        default:
            distance += c + 1;
            for (length += 3; length > 0 && at < size; length--, at++)
                output[at] = distance > at ? std::uint8_t{0} : output[at - distance];
            state = 0;
        }
    }
    return output;
}

} // namespace support
