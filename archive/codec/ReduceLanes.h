#pragma once

#include "archive/codec/FollowerTable.h"
#include "archive/codec/ReduceOutput.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace codec {

/// A place between two values of a reduced stream: the bit position, and the value before it. Together they
/// decide what the next bits mean.
struct ReducePlace {
    std::uint64_t position;
    std::uint64_t last;

    bool operator==(const ReducePlace&) const = default;
};

/// Decodes the values of a reduced stream, except for the last few at the end of its input.
///
/// What the bits of a value mean depends on the value before it. A decoder that takes one value after the
/// other therefore waits for each of them. A processor can follow several such chains at the same time, so
/// the input is divided into lanes that are decoded side by side.
///
/// The first lane starts at a known place. The others start at guessed places further on in the stream:
/// nobody knows yet whether a value starts there, nor which value comes before it. A lane that starts wrong
/// usually decodes the right values after a short distance. A value that is stored with all its eight bits
/// does not depend on the value before it and so ends the error, unless the lane's bit positions never come
/// to agree with the right ones.
///
/// The values of a lane are used only from the place where the values before them, decoded up to it, are
/// found to arrive. What no lane has decoded rightly is decoded one value after the other.
class ReduceLanes {
  public:
    /// Bytes of input for each lane: so many that guessing its start costs little in comparison, and so few
    /// that its results stay in the processor's cache.
    static constexpr std::size_t kUsualLane = 4096;

    /// `input` and `table` must outlive this object. `laneBytes` is the input of each lane.
    ReduceLanes(std::span<const std::uint8_t> input, const FollowerTable& table, std::size_t laneBytes);

    /// Decodes from `place` on, hands the values to `output` and moves `place` behind them. Stops when the
    /// output is full or when the end of the input is near; another decoder must decode what is left.
    void Decode(ReducePlace& place, ReduceOutput& output);

  private:
    static constexpr std::size_t kLanes = 4;
    static constexpr std::size_t kRoundValues = 6; // values of at most nine bits that one word holds
    static constexpr std::size_t kMostRounds = 2048;

    struct Lane {
        ReducePlace start;
        ReducePlace end;
        std::size_t count;
        std::array<std::uint8_t, kMostRounds * kRoundValues> values;
        std::array<std::uint64_t, kMostRounds> positions; // bit position after each round
    };

    using Lanes = std::array<Lane, kLanes>;

    std::uint64_t Load(std::uint64_t position) const;
    std::size_t DecodeBlock(ReducePlace& place, ReduceOutput& output);
    void Run(std::uint64_t begin);
    void DecodeAlone(ReducePlace& place, std::uint64_t stop, ReduceOutput& output);
    std::optional<std::size_t> Meet(ReducePlace& place, ReducePlace lane, ReduceOutput& output) const;
    ReducePlace GuessPlace(std::uint64_t position) const;
    void Weigh();

    const std::uint8_t* in_;
    std::uint64_t lastPosition_ = 0; ///< one more than the last bit position to load a word from; 0: none
    const FollowerTable& table_;
    std::uint64_t laneBits_;
    std::unique_ptr<Lanes> lanes_;
    /// How often each pattern of FollowerTable::kIndexBits bits was seen at the start of a value, and how
    /// rare it therefore is: its information in sixteenths of a bit.
    std::array<std::uint32_t, std::size_t{1} << FollowerTable::kIndexBits> seen_{};
    std::array<std::uint32_t, std::size_t{1} << FollowerTable::kIndexBits> weights_{};
};

} // namespace codec
