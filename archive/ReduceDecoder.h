#pragma once

#include <array>
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
    static constexpr int kMostFollowers = 32;

    struct FollowerSet {
        std::uint8_t count = 0;
        std::uint8_t indexBits = 0;
        std::array<std::uint8_t, kMostFollowers> followers{};
    };

    void ReadFollowerSets();
    std::uint32_t ReduceReadBits(unsigned count);
    std::uint8_t NextByte();

    std::span<const std::uint8_t> input_;
    std::size_t position_ = 0;
    std::uint64_t bits_ = 0;
    unsigned bitCount_ = 0;
    unsigned factor_;
    std::uint8_t last_ = 0;
    std::array<FollowerSet, 256> sets_{};
};

} // namespace archive
