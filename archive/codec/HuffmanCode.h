#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

inline constexpr unsigned kMostCodeBits = 15;
inline constexpr std::size_t kMostSymbols = 288;

/// A canonical Huffman code (RFC 1951, section 3.2.2): the symbols that have a code, in the order of their
/// codes, and how many there are of each length.
struct HuffmanCode {
    std::array<std::uint16_t, kMostCodeBits + 1> count{};
    std::array<std::uint16_t, kMostSymbols> symbols;
    unsigned longest = 0;

    /// Sets the code from code lengths, at most kMostSymbols; 0 is a symbol without a code. Returns false
    /// when the code is incomplete or over-subscribed; it must not be used then.
    bool Set(std::span<const std::uint8_t> lengths);
};

/// The codes of a HuffmanCode one after the other, with their first bit lowest, as the stream has them.
class ReversedCode {
  public:
    std::uint32_t Value() const { return value_; }

    /// Moves on to the next code of `length` bits. After the last code, which is all ones, the value is 0.
    void Next(unsigned length) {
        // Adding one to the code carries from its last bit, which is the highest here.
        const std::uint32_t zeros = ~value_ & ((1u << length) - 1);
        const std::uint32_t carry = std::bit_floor(zeros);
        value_ = zeros == 0 ? 0 : (value_ & (carry - 1)) | carry;
    }

  private:
    std::uint32_t value_ = 0;
};

} // namespace codec
