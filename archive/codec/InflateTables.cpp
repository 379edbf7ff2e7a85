#include "archive/codec/InflateTables.h"

#include "archive/codec/CodeMeanings.h"

#include <algorithm>
#include <memory>

namespace codec {

namespace {

using LitLenEntries = std::array<std::uint32_t, kLitLenSymbols>;
using DistanceEntries = std::array<std::uint32_t, kDistanceSymbols>;
using CodeLengthEntries = std::array<std::uint32_t, kCodeLengthSymbols>;

constexpr std::uint32_t Entry(const CodeMeaning& meaning) {
    return std::uint32_t{meaning.base} << 16 | meaning.extraBits;
}

constexpr LitLenEntries MakeLitLenEntries(bool deflate64) {
    LitLenEntries entries{};
    for (std::uint32_t literal = 0; literal < 256; literal++)
        entries[literal] = kEntryLiteral | literal << 16;
    entries[kEndOfBlockSymbol] = kEntryExceptional | kEntryEndOfBlock;
    for (std::size_t k = 0; k < kLengthCodes; k++)
        entries[kFirstLengthSymbol + k] = Entry(deflate64 ? kDeflate64Lengths[k] : kDeflateLengths[k]);
    return entries;
}

constexpr DistanceEntries MakeDistanceEntries() {
    DistanceEntries entries{};
    for (std::size_t code = 0; code < kDistanceCodes; code++)
        entries[code] = Entry(kDistances[code]);
    return entries;
}

constexpr CodeLengthEntries MakeCodeLengthEntries() {
    CodeLengthEntries entries{};
    for (std::uint32_t symbol = 0; symbol < kCodeLengthSymbols; symbol++)
        entries[symbol] = symbol << 16;
    return entries;
}

constexpr LitLenEntries kDeflateEntries = MakeLitLenEntries(false);
constexpr LitLenEntries kDeflate64Entries = MakeLitLenEntries(true);
constexpr DistanceEntries kDistanceEntries = MakeDistanceEntries();
constexpr CodeLengthEntries kCodeLengthEntries = MakeCodeLengthEntries();

/// The entry of a symbol whose code takes `codeBits` of the bits still to drop.
constexpr std::uint32_t WithCodeBits(std::uint32_t entry, unsigned codeBits) {
    return entry + (codeBits << 8 | codeBits);
}

/// Index bits of the second table that starts at a code of `length` bits, when `codes` of that length are
/// still to come: enough for the codes that follow to fill the table.
unsigned SecondTableBits(const HuffmanCode& code, unsigned length, unsigned codes, unsigned rootBits) {
    unsigned bits = length - rootBits;
    unsigned space = codes;
    while (space < (1u << bits)) {
        bits++;
        space = (space << 1) + code.count[rootBits + bits];
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
    BuildInflateTables(*tables, litLen, distance, deflate64, true);
    return tables;
}

} // namespace

unsigned BuildHuffmanTable(std::span<std::uint32_t> table, const HuffmanCode& code,
                           std::span<const std::uint32_t> entries, unsigned rootBits) {
    rootBits = std::min(rootBits, code.longest);
    const std::uint16_t* symbol = code.symbols.data();
    ReversedCode reversed;
    unsigned length = 1;
    // Codes up to the root's width. The table starts as wide as the shortest code and doubles with each bit.
    for (; length <= rootBits; length++) {
        for (unsigned codes = code.count[length]; codes != 0; codes--) {
            table[reversed.Value()] = WithCodeBits(entries[*symbol++], length);
            reversed.Next(length);
        }
        if (length != rootBits)
            std::copy_n(table.begin(), 1u << length, table.begin() + (1 << length));
    }

    // Codes that are longer share a root entry with all codes that start with the same bits; the entry links
    // to their second table.
    const std::uint32_t rootMask = (1u << rootBits) - 1;
    std::uint32_t start = 0;
    std::uint32_t tableEnd = 1u << rootBits;
    std::uint32_t root = ~0u;
    unsigned bits = 0;
    for (; length <= code.longest; length++) {
        for (unsigned codes = code.count[length]; codes != 0; codes--) {
            if ((reversed.Value() & rootMask) != root) {
                root = reversed.Value() & rootMask;
                start = tableEnd;
                bits = SecondTableBits(code, length, codes, rootBits);
                tableEnd += 1u << bits;
                table[root] = kEntryExceptional | kEntryLink | start << 16 | bits << 8 | rootBits;
            }
            const std::uint32_t entry = WithCodeBits(entries[*symbol++], length - rootBits);
            const std::uint32_t step = 1u << (length - rootBits);
            for (std::uint32_t index = reversed.Value() >> rootBits; index < (1u << bits); index += step)
                table[start + index] = entry;
            reversed.Next(length);
        }
    }
    return rootBits;
}

bool BuildInflateTables(InflateTables& tables, std::span<const std::uint8_t> litLenLengths,
                        std::span<const std::uint8_t> distanceLengths, bool deflate64, bool withPairs) {
    HuffmanCode litLen;
    HuffmanCode distance;
    if (!litLen.Set(litLenLengths) || !distance.Set(distanceLengths))
        return false;
    const LitLenEntries& entries = deflate64 ? kDeflate64Entries : kDeflateEntries;
    tables.litLenRootBits = BuildHuffmanTable(tables.litLen, litLen, entries, kLitLenRootBits);
    tables.distanceRootBits =
        BuildHuffmanTable(tables.distance, distance, kDistanceEntries, kDistanceRootBits);
    tables.hasPairs = withPairs;
    if (withPairs)
        BuildPairTable(tables.pairs, litLen, distance, deflate64);
    return true;
}

const InflateTables& FixedTables(bool deflate64) {
    static const std::unique_ptr<const InflateTables> deflate = MakeFixedTables(false);
    static const std::unique_ptr<const InflateTables> enhanced = MakeFixedTables(true);
    return deflate64 ? *enhanced : *deflate;
}

unsigned BuildCodeLengthTable(std::span<std::uint32_t> table, std::span<const std::uint8_t> lengths) {
    HuffmanCode code;
    if (!code.Set(lengths))
        return 0;
    return BuildHuffmanTable(table, code, kCodeLengthEntries, kCodeLengthRootBits);
}

} // namespace codec
