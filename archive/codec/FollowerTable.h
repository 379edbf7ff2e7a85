#pragma once

#include "archive/codec/InflateBits.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace codec {

/// The follower sets of a reduced stream (ZIP application note, section 5.2), as a table that tells what the
/// next bits mean after a given value.
class FollowerTable {
  public:
    /// Most bits that a value takes: one flag bit and its eight bits in full.
    static constexpr unsigned kMostBits = 9;

    /// Bits that decide whether a value is stored in full or as the number of a follower and, in the second
    /// case, which value it is.
    static constexpr unsigned kIndexBits = 6;

    /// Reads the follower sets from the start of a stream.
    void Read(InflateBits& bits);

    /// Decodes the value in the lowest kMostBits bits of `word`. `last` is the value before it and becomes
    /// the decoded one. Returns the number of bits that the value takes, at least one. There is no branch on
    /// how the value is stored, because the processor would predict it wrongly too often.
    [[gnu::always_inline]] unsigned Step(std::uint64_t word, std::uint64_t& last) const {
        const std::uint32_t entry = rows_[last][word % kRow];
        last = ((entry >> 8) & 0xFF) | ((word >> (entry >> 24)) & (entry >> 16) & 0xFF);
        return entry & 0xFF;
    }

  private:
    static constexpr std::size_t kRow = std::size_t{1} << kIndexBits;

    /// Row j is for the values that follow the value j. The parts of an entry:
    ///
    ///   bits  0..7   bits that the value takes
    ///   bits  8..15  the follower
    ///   bits 16..23  all set where the value is stored in full, else 0
    ///   bits 24..31  bits in front of a value that is stored in full
    std::array<std::array<std::uint32_t, kRow>, 256> rows_;
};

} // namespace codec
