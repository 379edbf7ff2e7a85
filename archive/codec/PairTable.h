#pragma once

#include "archive/codec/HuffmanCode.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace codec {

// The table of the fast loops. It is indexed with the next kPairBits stream bits. One entry holds a literal,
// or a whole match: its length, extra bits included, and its distance code. Most codes are short enough for
// that. Only the extra bits of the distance are left in the stream for the loop to read. The parts of an
// entry:
//
//   bits  0..7   bits to drop: codes and all extra bits
//   bits  8..15  bytes that the output grows by: 1 for a literal, else the length
//   bits 16..21  where the distance's extra bits start
//   bits 24..31  literal
//   bit   32     1 for a literal
//   bit   40     none of these: a longer code, a match that needs more bits or is longer than
//                kPairMostLength, or the end of the block
//   bits 47..63  distance base - kPairLeastDistance, signed
//
// A loop can treat all entries alike, because a literal is followed by a copy of length 0 from
// kPairLiteralDistance bytes before. That is far enough back that the copy never reads a byte that has only
// just been written, which would be slow.

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
