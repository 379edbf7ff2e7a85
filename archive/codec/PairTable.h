#pragma once

#include "archive/codec/HuffmanCode.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace codec {

// The table of the fast loops. One look-up with the next kPairBits stream bits answers a literal, or a whole
// match: its length with the extra bits, and its distance code. Most codes are short enough for that. Only
// the distance's extra bits are left to be cut from the stream. An entry:
//
//   bits  0..7   bits to drop: codes and all extra bits
//   bits  8..15  bytes that the output grows by: 1 for a literal, else the length
//   bits 16..21  where the distance's extra bits start
//   bits 24..31  literal
//   bit   32     1 for a literal
//   bit   40     none of these: a longer code, a match that needs more bits or is longer than
//   kPairMostLength, the
//                end of the block
//   bits 47..63  distance base - kPairLeastDistance, signed
//
// So that a loop can treat all entries alike, a literal is followed by a copy of no length from
// kPairLiteralDistance bytes before: far enough for the copy to meet no byte that has only just been written.

inline constexpr unsigned kPairBits = 12;
inline constexpr std::uint64_t kPairLiteral = std::uint64_t{1} << 32;
inline constexpr std::uint64_t kPairOther = std::uint64_t{1} << 40;
inline constexpr unsigned kPairDistanceShift = 47;
inline constexpr std::uint64_t kPairLiteralDistance = 512;
inline constexpr std::uint64_t kPairLeastDistance = 16;
inline constexpr std::uint64_t kPairMostLength = 255;

using PairTable = std::array<std::uint64_t, std::size_t{1} << kPairBits>;

/// Fills `table` for two complete codes.
void BuildPairTable(PairTable& table, const HuffmanCode& litLen, const HuffmanCode& distance, bool deflate64);

} // namespace codec
