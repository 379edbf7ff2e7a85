#include "archive/codec/ReduceLanes.h"

#include "base/LittleEndian.h"

#include <algorithm>
#include <cmath>

namespace codec {

namespace {

/// Bit positions at which the start of a value is looked for: the one asked for and those behind it. Values
/// can stay out of step for ever only in streams whose code lengths share a divisor: six and nine bits, with
/// follower sets that are all full, or three and nine bits. The largest such divisor is 3.
constexpr std::size_t kPhases = 3;

/// How many values are decoded at each of these positions to find the best of them.
constexpr unsigned kTrial = 64;

/// How much better than the first position another one must be to be taken, in sixteenths of a bit.
constexpr std::uint32_t kClearly = 8 * 16;

/// Values that two chains may decode until they meet; a dozen is usual.
constexpr unsigned kMostMeeting = 256;

/// Before lanes are tried, as much input as one lane has is decoded one value after the other, to learn what
/// the values look like. Each time that the lanes fail, this amount doubles, up to so many lanes.
constexpr std::uint64_t kMostAlone = 64;

/// Bits that guessing a place may read behind the last lane.
constexpr std::uint64_t kTrialBits = kPhases + kTrial * FollowerTable::kMostBits;

} // namespace

ReduceLanes::ReduceLanes(std::span<const std::uint8_t> input, const FollowerTable& table,
                         std::size_t laneBytes)
    : in_(input.data()), lastPosition_(input.size() < 8 ? 0 : (input.size() - 8) * 8 + 1), table_(table),
      laneBits_(laneBytes * 8) {
    static_assert(kRoundValues * FollowerTable::kMostBits <= 57, "what a word holds at any position");
}

/// The stream from a bit position on: at least 57 bits.
std::uint64_t ReduceLanes::Load(std::uint64_t position) const {
    return base::LoadLittle64(in_ + (position >> 3)) >> (position & 7);
}

void ReduceLanes::Decode(ReducePlace& place, ReduceOutput& output) {
    if (lastPosition_ == 0)
        return;
    std::uint64_t alone = laneBits_;
    while (!output.Full() && place.position < lastPosition_) {
        DecodeAlone(place, std::min(place.position + alone, lastPosition_), output);
        Weigh();
        std::size_t met = kLanes;
        while (met > 1 && !output.Full() && place.position + kLanes * laneBits_ + kTrialBits < lastPosition_)
            met = DecodeBlock(place, output);
        alone = std::min(met > 1 ? laneBits_ : alone * 2, laneBits_ * kMostAlone);
    }
}

/// Decodes the input of all lanes. Returns how many of the lanes were right.
std::size_t ReduceLanes::DecodeBlock(ReducePlace& place, ReduceOutput& output) {
    const std::uint64_t begin = place.position;
    if (!lanes_)
        lanes_ = std::make_unique_for_overwrite<Lanes>();
    (*lanes_)[0].start = place;
    for (std::size_t k = 1; k < kLanes; k++)
        (*lanes_)[k].start = GuessPlace(begin + k * laneBits_);
    Run(begin);
    std::size_t met = 0;
    for (std::size_t k = 0; k < kLanes; k++) {
        const Lane& lane = (*lanes_)[k];
        DecodeAlone(place, lane.start.position, output);
        if (const auto skip = Meet(place, lane.start, output)) {
            met++;
            if (*skip < lane.count) {
                output.Put(std::span(lane.values).subspan(*skip, lane.count - *skip));
                place = lane.end;
            }
        }
    }
    return met;
}

/// Decodes all lanes side by side until each has come to where the next one starts.
void ReduceLanes::Run(std::uint64_t begin) {
    std::array<ReducePlace, kLanes> at;
    std::array<std::uint8_t*, kLanes> values;
    for (std::size_t k = 0; k < kLanes; k++) {
        at[k] = (*lanes_)[k].start;
        values[k] = (*lanes_)[k].values.data();
    }
    const auto all = [&](const auto& is) {
        bool result = true;
        for (std::size_t k = 0; k < kLanes; k++)
            result &= is(k);
        return result;
    };
    std::size_t rounds = 0;
    while (rounds < kMostRounds && all([&](std::size_t k) { return at[k].position < lastPosition_; }) &&
           !all([&](std::size_t k) { return at[k].position >= begin + (k + 1) * laneBits_; })) {
        std::array<std::uint64_t, kLanes> words;
        for (std::size_t k = 0; k < kLanes; k++)
            words[k] = Load(at[k].position);
        for (std::size_t n = 0; n < kRoundValues; n++)
            for (std::size_t k = 0; k < kLanes; k++) {
                const unsigned bits = table_.Step(words[k], at[k].last);
                words[k] >>= bits;
                at[k].position += bits;
                values[k][rounds * kRoundValues + n] = static_cast<std::uint8_t>(at[k].last);
            }
        for (std::size_t k = 0; k < kLanes; k++)
            (*lanes_)[k].positions[rounds] = at[k].position;
        rounds++;
    }
    for (std::size_t k = 0; k < kLanes; k++) {
        // What a lane has decoded behind the start of the next lane is left to the next lane.
        Lane& lane = (*lanes_)[k];
        const auto end = lane.positions.begin() + static_cast<std::ptrdiff_t>(rounds);
        const auto stop = std::lower_bound(lane.positions.begin(), end, begin + (k + 1) * laneBits_);
        const auto used = std::min(rounds, static_cast<std::size_t>(stop - lane.positions.begin()) + 1);
        lane.count = used * kRoundValues;
        lane.end =
            used == 0 ? lane.start : ReducePlace{lane.positions[used - 1], lane.values[lane.count - 1]};
    }
}

/// Decodes values one after the other until `stop`, and counts the patterns of bits that they start with.
void ReduceLanes::DecodeAlone(ReducePlace& place, std::uint64_t stop, ReduceOutput& output) {
    std::array<std::uint8_t, 256 * kRoundValues> values;
    ReducePlace at = place;
    while (at.position < stop && !output.Full()) {
        std::size_t count = 0;
        while (at.position < stop && count < values.size()) {
            std::uint64_t word = Load(at.position);
            seen_[word % seen_.size()]++;
            for (std::size_t n = 0; n < kRoundValues; n++) {
                const unsigned bits = table_.Step(word, at.last);
                word >>= bits;
                at.position += bits;
                values[count++] = static_cast<std::uint8_t>(at.last);
            }
        }
        output.Put(std::span(values).first(count));
    }
    place = at;
}

/// Decodes from `place` on until it arrives at a place that the lane has passed, too. Returns how many values
/// of the lane come before that place, or nothing when the two do not meet soon.
std::optional<std::size_t> ReduceLanes::Meet(ReducePlace& place, ReducePlace lane,
                                             ReduceOutput& output) const {
    const auto step = [this](ReducePlace& at) { at.position += table_.Step(Load(at.position), at.last); };
    std::size_t skip = 0;
    for (unsigned steps = 0; steps < kMostMeeting; steps++) {
        if (place == lane)
            return skip;
        if (std::max(place.position, lane.position) >= lastPosition_)
            break;
        if (place.position <= lane.position) {
            step(place);
            output.Put(static_cast<std::uint8_t>(place.last));
        } else {
            step(lane);
            skip++;
        }
    }
    return std::nullopt;
}

/// The place near `position` from where the bits look most like those of the values decoded so far.
ReducePlace ReduceLanes::GuessPlace(std::uint64_t position) const {
    std::array<ReducePlace, kPhases> at;
    for (std::size_t phase = 0; phase < kPhases; phase++)
        at[phase] = {position + phase, 0};
    // Where all positions look alike, the first is right for values that are all stored with eight bits.
    std::array<std::uint32_t, kPhases> costs = {0, kClearly, kClearly};
    for (unsigned n = 0; n < kTrial; n++)
        for (std::size_t phase = 0; phase < kPhases; phase++) {
            const std::uint64_t word = Load(at[phase].position);
            costs[phase] += weights_[word % weights_.size()];
            at[phase].position += table_.Step(word, at[phase].last);
        }
    return {position + static_cast<std::uint64_t>(std::ranges::min_element(costs) - costs.begin()), 0};
}

void ReduceLanes::Weigh() {
    std::uint32_t all = 0;
    for (const std::uint32_t count : seen_)
        all += count;
    for (std::size_t i = 0; i < seen_.size(); i++) {
        const double share = (seen_[i] + 1.0) / (all + 64.0);
        weights_[i] = static_cast<std::uint32_t>(-16 * std::log2(share));
        seen_[i] /= 2; // what was long ago counts less
    }
}

} // namespace codec
