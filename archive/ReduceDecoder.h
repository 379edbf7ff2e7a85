#pragma once

#include "InflateBits.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace archive {

/// Follower sets and the escape machine of the reducing methods (ZIP application note, section 5.2).
class ReduceDecoder {
  public:
    /// `factor` is 1 to 4. `input` must outlive the decoder.
    ReduceDecoder(std::span<const std::uint8_t> input, int factor);

    /// Fills `output` from its first to its last byte; stops in the middle of a copy when it is full. Bits
    /// that the input lacks read as 0.
    void Decode(std::span<std::uint8_t> output);

  private:
    static constexpr unsigned kMostFollowers = 32;

    /// A follower, and the bits that its index and the bit before it take.
    struct Follower {
        std::uint8_t value;
        std::uint8_t bits;
    };

    /// How a value in full stands after a byte: whether it always does, and the bit before it that says so.
    struct Plain {
        std::uint8_t always;
        std::uint8_t flagBits;
    };

    struct Values;

    void ReadFollowerSets();
    void DecodeFast(Values& state, std::span<std::uint8_t> output, std::size_t& at) const;
    void DecodeStep(Values& values, std::span<std::uint8_t> output, std::size_t& at) const;

    InflateBits bits_;
    unsigned factor_;
    /// Row j: the followers of byte j by the next five bits, however many of them the index takes.
    std::array<std::array<Follower, kMostFollowers>, 256> followers_{};
    std::array<Plain, 256> plain_{};
};

} // namespace archive
