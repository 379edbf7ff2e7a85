#include "InflateTables.h"

#include <algorithm>
#include <bit>
#include <memory>

namespace archive {

namespace {

// RFC 1951, section 3.2.5. Codes 286 and 287 have no meaning there and copy nothing here.
constexpr std::array<std::uint32_t, 31> kLengthBases = {3,  4,   5,   6,   7,   8,   9,   10, 11, 13, 15,
                                                        17, 19,  23,  27,  31,  35,  43,  51, 59, 67, 83,
                                                        99, 115, 131, 163, 195, 227, 258, 0,  0};
constexpr std::array<std::uint32_t, 31> kLengthExtraBits = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2,
                                                            3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0, 0, 0};
constexpr std::size_t kFirstLength = 257;
constexpr std::size_t kLongLength = 285;

using LitLenEntries = std::array<std::uint32_t, kLitLenSymbols>;
using DistanceEntries = std::array<std::uint32_t, kDistanceSymbols>;

constexpr LitLenEntries MakeLitLenEntries(bool deflate64) {
    LitLenEntries entries{};
    for (std::uint32_t literal = 0; literal < 256; literal++)
        entries[literal] = kEntryLiteral | literal << 16;
    entries[256] = kEntryExceptional | kEntryEndOfBlock;
    for (std::size_t k = 0; k < kLengthBases.size(); k++)
        entries[kFirstLength + k] = kLengthBases[k] << 16 | kLengthExtraBits[k];
    if (deflate64)
        entries[kLongLength] = 3u << 16 | 16u;
    return entries;
}

/// Distance codes come in pairs, each pair with one extra bit more. Codes 30 and 31 follow the same rule.
constexpr DistanceEntries MakeDistanceEntries() {
    DistanceEntries entries{};
    std::uint32_t base = 1;
    for (std::uint32_t code = 0; code < kDistanceSymbols; code++) {
        const std::uint32_t extraBits = code < 2 ? 0 : code / 2 - 1;
        entries[code] = base << 16 | extraBits;
        base += 1u << extraBits;
    }
    return entries;
}

constexpr std::array<std::uint32_t, kCodeLengthSymbols> MakeCodeLengthEntries() {
    std::array<std::uint32_t, kCodeLengthSymbols> entries{};
    for (std::uint32_t symbol = 0; symbol < kCodeLengthSymbols; symbol++)
        entries[symbol] = symbol << 16;
    return entries;
}

constexpr LitLenEntries kDeflateLitLen = MakeLitLenEntries(false);
constexpr LitLenEntries kDeflate64LitLen = MakeLitLenEntries(true);
constexpr DistanceEntries kDistances = MakeDistanceEntries();
constexpr std::array<std::uint32_t, kCodeLengthSymbols> kCodeLengths = MakeCodeLengthEntries();

static_assert(kDistances[29] == (24577u << 16 | 13u));
static_assert(kDistances[30] == (32769u << 16 | 14u) && kDistances[31] == (49153u << 16 | 14u));

/// The entry of a symbol whose code takes `codeBits` of the bits still to drop.
constexpr std::uint32_t WithCodeBits(std::uint32_t symbol, unsigned codeBits) {
    return symbol + (codeBits << 8 | codeBits);
}

/// The code after `code` of the same length in canonical order, both with their first bit lowest. `code` is
/// not the last one (all ones).
constexpr std::uint32_t NextReversedCode(std::uint32_t code, unsigned length) {
    const std::uint32_t zeros = ~code & ((1u << length) - 1);
    const std::uint32_t carry = std::bit_floor(zeros);
    return (code & (carry - 1)) | carry;
}

/// Bits of the second table that starts at a code of `length` bits: enough codes must follow to fill it.
unsigned SecondTableBits(const std::array<unsigned, kMostCodeBits + 1>& count, unsigned length,
                         unsigned rootBits) {
    unsigned bits = length - rootBits;
    unsigned space = count[length];
    while (space < (1u << bits)) {
        bits++;
        space = (space << 1) + count[rootBits + bits];
    }
    return bits;
}

std::unique_ptr<const InflateTables> MakeFixedTables(bool deflate64) {
    std::array<std::uint8_t, kLitLenSymbols> litLen;
    std::fill(litLen.begin(), litLen.begin() + 144, std::uint8_t{8});
    std::fill(litLen.begin() + 144, litLen.begin() + 256, std::uint8_t{9});
    std::fill(litLen.begin() + 256, litLen.begin() + 280, std::uint8_t{7});
    std::fill(litLen.begin() + 280, litLen.end(), std::uint8_t{8});
    std::array<std::uint8_t, kDistanceSymbols> distance;
    distance.fill(5);
    auto tables = std::make_unique<InflateTables>();
    BuildInflateTables(*tables, litLen, distance, deflate64);
    return tables;
}

} // namespace

unsigned BuildHuffmanTable(std::span<std::uint32_t> table, std::span<const std::uint8_t> lengths,
                           std::span<const std::uint32_t> symbols, unsigned rootBits) {
    std::array<unsigned, kMostCodeBits + 1> count{};
    for (const std::uint8_t length : lengths)
        count[length]++;
    count[0] = 0;

    unsigned longest = kMostCodeBits;
    while (longest > 0 && count[longest] == 0)
        longest--;
    int left = 1;
    std::array<unsigned, kMostCodeBits + 2> offset{};
    for (unsigned length = 1; length <= longest; length++) {
        left = left * 2 - static_cast<int>(count[length]);
        if (left < 0)
            return 0;
        offset[length + 1] = offset[length] + count[length];
    }
    if (left != 0)
        return 0;

    // The symbols in the order of their codes.
    std::array<std::uint16_t, kLitLenSymbols> sorted;
    for (std::size_t symbol = 0; symbol < lengths.size(); symbol++)
        if (lengths[symbol] != 0)
            sorted[offset[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);

    rootBits = std::min(rootBits, longest);
    const std::uint16_t* next = sorted.data();
    std::uint32_t code = 0;
    unsigned length = 1;
    // Codes up to the root's width. The table starts as wide as the shortest code and doubles with each bit.
    std::size_t width = 2;
    for (; length <= rootBits; length++) {
        for (unsigned codes = count[length]; codes != 0; codes--) {
            table[code] = WithCodeBits(symbols[*next++], length);
            if (code != width - 1)
                code = NextReversedCode(code, length);
        }
        if (length != rootBits) {
            std::copy_n(table.begin(), width, table.begin() + static_cast<std::ptrdiff_t>(width));
            width *= 2;
        }
    }
    if (longest == rootBits)
        return rootBits;

    // Longer codes share a root entry, which links to a second table, with those that start with the same
    // bits.
    const std::uint32_t rootMask = (1u << rootBits) - 1;
    std::uint32_t start = 0;
    std::uint32_t tableEnd = 1u << rootBits;
    std::uint32_t root = ~0u;
    unsigned bits = 0;
    for (; length <= longest; length++) {
        for (; count[length] != 0; count[length]--) {
            if ((code & rootMask) != root) {
                root = code & rootMask;
                start = tableEnd;
                bits = SecondTableBits(count, length, rootBits);
                tableEnd += 1u << bits;
                table[root] = kEntryExceptional | kEntryLink | start << 16 | bits << 8 | rootBits;
            }
            const std::uint32_t entry = WithCodeBits(symbols[*next++], length - rootBits);
            for (std::uint32_t index = code >> rootBits; index < (1u << bits);
                 index += 1u << (length - rootBits))
                table[start + index] = entry;
            if (code != (1u << length) - 1)
                code = NextReversedCode(code, length);
        }
    }
    return rootBits;
}

bool BuildInflateTables(InflateTables& tables, std::span<const std::uint8_t> litLenLengths,
                        std::span<const std::uint8_t> distanceLengths, bool deflate64) {
    tables.litLenRootBits = BuildHuffmanTable(tables.litLen, litLenLengths,
                                              deflate64 ? kDeflate64LitLen : kDeflateLitLen, kLitLenRootBits);
    if (tables.litLenRootBits == 0)
        return false;
    tables.distanceRootBits =
        BuildHuffmanTable(tables.distance, distanceLengths, kDistances, kDistanceRootBits);
    return tables.distanceRootBits != 0;
}

const InflateTables& FixedTables(bool deflate64) {
    static const std::unique_ptr<const InflateTables> deflate = MakeFixedTables(false);
    static const std::unique_ptr<const InflateTables> enhanced = MakeFixedTables(true);
    return deflate64 ? *enhanced : *deflate;
}

unsigned BuildCodeLengthTable(std::span<std::uint32_t> table, std::span<const std::uint8_t> lengths) {
    return BuildHuffmanTable(table, lengths, kCodeLengths, kCodeLengthRootBits);
}

} // namespace archive
