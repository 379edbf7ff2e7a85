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

/// Between two values of a reduced stream: the bit position, and the value before it.
struct ReducePlace {
    std::uint64_t position;
    std::uint64_t last;

    bool operator==(const ReducePlace&) const = default;
};

/// Decodes the values of a reduced stream, up to where its input ends soon.
///
/// What a value's bits mean depends on the value before it, so that one after the other each has to be waited
/// for. A processor can do several such chains at once: lanes, which start at places further on in the stream
/// where nobody knows yet whether a value starts there, and after which. A lane that starts wrong very soon
/// falls in with the right values, since a value in full makes an end of the error, provided that its
/// positions are not out of step for ever. It counts only from the place where the values before it, followed
/// to their end, are found to arrive at it; what no lane has found is decoded one after the other.
class ReduceLanes {
  public:
    /// Bytes of input for each lane: enough to make little of finding a place, and few enough for a cache.
    static constexpr std::size_t kUsualLane = 4096;

    /// `input` and `table` must outlive the lanes, of `laneBytes` each.
    ReduceLanes(std::span<const std::uint8_t> input, const FollowerTable& table, std::size_t laneBytes);

    /// Puts values from `place` on and moves it, until the output is full or the input ends soon. Another
    /// decoder must put the rest.
    void Decode(ReducePlace& place, ReduceOutput& output);

  private:
    static constexpr std::size_t kLanes = 4;
    static constexpr std::size_t kRoundValues = 6; // of at most nine bits, out of one word
    static constexpr std::size_t kMostRounds = 2048;

    struct Lane {
        ReducePlace start;
        ReducePlace end;
        std::size_t count;
        std::array<std::uint8_t, kMostRounds * kRoundValues> values;
        std::array<std::uint64_t, kMostRounds> positions; // after each round
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
    std::uint64_t lastPosition_ = 0; ///< the last that a word can be loaded from, plus one; 0 for none
    const FollowerTable& table_;
    std::uint64_t laneBits_;
    std::unique_ptr<Lanes> lanes_;
    /// How often the bits of an index stood at the start of a value, and how many bits of information they
    /// are worth, times sixteen.
    std::array<std::uint32_t, std::size_t{1} << FollowerTable::kIndexBits> seen_{};
    std::array<std::uint32_t, std::size_t{1} << FollowerTable::kIndexBits> weights_{};
};

} // namespace codec
