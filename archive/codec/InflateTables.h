#pragma once

#include "archive/codec/HuffmanCode.h"
#include "archive/codec/PairTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace codec {

// Decode tables of the Deflate family (RFC 1951, section 3.2).
//
// A table is indexed with the next `rootBits` stream bits, first bit lowest. Its entries are 32 bits wide and
// hold all that decoding a symbol needs:
//
//   bits  0..7   bits to drop: code and extra bits together; for a link, the root bits
//   bits  8..12  bits of the code alone: where the extra bits start; for a link, index bits of the
//                second table
//   bit   13     end of block
//   bit   14     link to a second table: the code is longer than the root index
//   bit   15     exceptional: bit 13 or bit 14 is set
//   bits 16..31  literal, length base, distance base, or start of the second table
//   bit   31     literal (length bases stay below 0x8000; the distance table has no literals)
//
// Distance bases need all sixteen upper bits: the largest is 49153.

inline constexpr std::uint32_t kEntryLiteral = 1u << 31;
inline constexpr std::uint32_t kEntryExceptional = 1u << 15;
inline constexpr std::uint32_t kEntryLink = 1u << 14;
inline constexpr std::uint32_t kEntryEndOfBlock = 1u << 13;

inline constexpr std::size_t kLitLenSymbols = 288;
inline constexpr std::size_t kDistanceSymbols = 32;
inline constexpr std::size_t kCodeLengthSymbols = 19;

inline constexpr unsigned kLitLenRootBits = 11;
inline constexpr unsigned kDistanceRootBits = 8;
inline constexpr unsigned kCodeLengthRootBits = 7;

/// Entries that a table of `symbols` codes can take at most: the root, and one second table of full size for
/// every two codes (a complete code has at least two codes below each of its inner nodes).
constexpr std::size_t MostEntries(std::size_t symbols, unsigned rootBits) {
    return (std::size_t{1} << rootBits) + (symbols / 2) * (std::size_t{1} << (kMostCodeBits - rootBits));
}

/// The tables of one block. Those of the careful loop hold every code; the pair table (PairTable.h) serves
/// the fast loops and is built when a block is long enough to be worth it.
struct InflateTables {
    unsigned litLenRootBits = 0;
    unsigned distanceRootBits = 0;
    std::array<std::uint32_t, MostEntries(kLitLenSymbols, kLitLenRootBits)> litLen;
    std::array<std::uint32_t, MostEntries(kDistanceSymbols, kDistanceRootBits)> distance;
    bool hasPairs = false;
    PairTable pairs;
};

/// Builds the table of a complete code. `entries[n]` is the entry of symbol n, with the number of its extra
/// bits in bits 0..7; this function adds the bits of its code. Returns the number of root bits used, which is
/// `rootBits` or less.
unsigned BuildHuffmanTable(std::span<std::uint32_t> table, const HuffmanCode& code,
                           std::span<const std::uint32_t> entries, unsigned rootBits);

/// Builds the tables of a block from its code lengths. Returns false when one of the codes is refused. The
/// pair table is built only with `withPairs`.
bool BuildInflateTables(InflateTables& tables, std::span<const std::uint8_t> litLenLengths,
                        std::span<const std::uint8_t> distanceLengths, bool deflate64, bool withPairs);

/// The tables of the fixed codes (RFC 1951, section 3.2.6), with all 288 and all 32 symbols. Built once.
const InflateTables& FixedTables(bool deflate64);

/// Builds the table of the code in which a block stores its code lengths. An entry holds its symbol in bits
/// 16..31. Returns the number of root bits, or 0 when the code is refused.
unsigned BuildCodeLengthTable(std::span<std::uint32_t> table, std::span<const std::uint8_t> lengths);

} // namespace codec
