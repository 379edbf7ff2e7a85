#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace codec {

// What the codes of Deflate mean (RFC 1951, section 3.2.5), and of Deflate64, where they differ.

/// Base of a length or a distance, and the number of extra bits to add.
struct CodeMeaning {
    std::uint16_t base = 0;
    std::uint8_t extraBits = 0;
};

inline constexpr std::size_t kEndOfBlockSymbol = 256;
inline constexpr std::size_t kFirstLengthSymbol = 257;
inline constexpr std::size_t kLengthCodes = 31;
inline constexpr std::size_t kDistanceCodes = 32;

/// Codes 286 and 287 have no meaning in the standard and copy nothing here. Code 285 is 258 in Deflate; in
/// Deflate64 it takes sixteen bits.
constexpr std::array<CodeMeaning, kLengthCodes> MakeLengthMeanings(bool deflate64) {
    std::array<CodeMeaning, kLengthCodes> meanings{};
    unsigned base = 3;
    for (unsigned code = 0; code < 28; code++) {
        const unsigned extraBits = code < 8 ? 0 : code / 4 - 1;
        meanings[code] = {static_cast<std::uint16_t>(base), static_cast<std::uint8_t>(extraBits)};
        base += 1u << extraBits;
    }
    meanings[28] = deflate64 ? CodeMeaning{3, 16} : CodeMeaning{258, 0};
    return meanings;
}

/// Codes come in pairs, each pair with one extra bit more. Codes 30 and 31, which only Deflate64 has, follow
/// suit.
constexpr std::array<CodeMeaning, kDistanceCodes> MakeDistanceMeanings() {
    std::array<CodeMeaning, kDistanceCodes> meanings{};
    unsigned base = 1;
    for (unsigned code = 0; code < kDistanceCodes; code++) {
        const unsigned extraBits = code < 2 ? 0 : code / 2 - 1;
        meanings[code] = {static_cast<std::uint16_t>(base), static_cast<std::uint8_t>(extraBits)};
        base += 1u << extraBits;
    }
    return meanings;
}

inline constexpr std::array<CodeMeaning, kLengthCodes> kDeflateLengths = MakeLengthMeanings(false);
inline constexpr std::array<CodeMeaning, kLengthCodes> kDeflate64Lengths = MakeLengthMeanings(true);
inline constexpr std::array<CodeMeaning, kDistanceCodes> kDistances = MakeDistanceMeanings();

static_assert(kDeflateLengths[8].base == 11 && kDeflateLengths[8].extraBits == 1);
static_assert(kDeflateLengths[27].base == 227 && kDeflateLengths[27].extraBits == 5);
static_assert(kDistances[29].base == 24577 && kDistances[29].extraBits == 13);
static_assert(kDistances[30].base == 32769 && kDistances[30].extraBits == 14);
static_assert(kDistances[31].base == 49153 && kDistances[31].extraBits == 14);

} // namespace codec
