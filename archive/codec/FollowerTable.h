#pragma once

#include "archive/codec/InflateBits.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace codec {

/// The follower sets of a reduced stream (ZIP application note, section 5.2), ready to be asked what the next
/// bits mean after a given value.
class FollowerTable {
  public:
    /// What a value takes at most: the bit before it and its eight bits in full.
    static constexpr unsigned kMostBits = 9;

    /// Bits that decide how a value stands and, unless it stands in full, which it is.
    static constexpr unsigned kIndexBits = 6;

    /// Takes the sets off the start of a stream.
    void Read(InflateBits& bits);

    /// The value that the lowest kMostBits bits of `word` give after `last`, which it becomes. Answers the
    /// bits that it takes, at least one. A branch on how a value stands would be mispredicted too often.
    [[gnu::always_inline]] unsigned Step(std::uint64_t word, std::uint64_t& last) const {
        const std::uint32_t entry = rows_[last][word % kRow];
        last = ((entry >> 8) & 0xFF) | ((word >> (entry >> 24)) & (entry >> 16) & 0xFF);
        return entry & 0xFF;
    }

  private:
    static constexpr std::size_t kRow = std::size_t{1} << kIndexBits;

    /// Row j is for what follows j. An entry: bits 0..7 what the value takes, bits 8..15 the follower, bits
    /// 16..23 all set where the value stands in full, bits 24..31 the bits before it then.
    std::array<std::array<std::uint32_t, kRow>, 256> rows_;
};

} // namespace codec
