#include "archive/codec/ReduceLanes.h"

#include "base/LittleEndian.h"

#include <algorithm>
#include <cmath>

namespace codec {

namespace {

/// Where a place may be that is looked for, from where it is looked for on. Streams whose codes share a
/// divisor are the only ones that stay out of step: six and nine bits, with sets that are all full, or three
/// and nine.
constexpr std::size_t kPhases = 3;

/// Values by which the phases are told apart.
constexpr unsigned kTrial = 64;

/// What one phase must be better by, in sixteenths of a bit, to be taken before the first.
constexpr std::uint32_t kClearly = 8 * 16;

/// Steps that two chains may take until they meet; a dozen is usual.
constexpr unsigned kMostMeeting = 256;

/// As much as for one lane is decoded alone, to learn what values look like, before lanes are tried; up to so
/// many times as much when they have failed.
constexpr std::uint64_t kMostAlone = 64;

/// Input that the trial of a place may read and the lanes must leave.
constexpr std::uint64_t kTrialBits = kPhases + kTrial * FollowerTable::kMostBits;

} // namespace

ReduceLanes::ReduceLanes(std::span<const std::uint8_t> input, const FollowerTable& table,
                         std::size_t laneBytes)
    : in_(input.data()), lastPosition_(input.size() < 8 ? 0 : (input.size() - 8) * 8 + 1), table_(table),
      laneBits_(laneBytes * 8) {
    static_assert(kRoundValues * FollowerTable::kMostBits <= 57, "what a word holds at any position");
}

/// The stream at a position: at least 57 bits.
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

/// Decodes as much as all lanes stand for; answers how many of them were right.
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
        // What a lane has decoded past the start of the next one is left to that.
        Lane& lane = (*lanes_)[k];
        const auto end = lane.positions.begin() + static_cast<std::ptrdiff_t>(rounds);
        const auto stop = std::lower_bound(lane.positions.begin(), end, begin + (k + 1) * laneBits_);
        const auto used = std::min(rounds, static_cast<std::size_t>(stop - lane.positions.begin()) + 1);
        lane.count = used * kRoundValues;
        lane.end =
            used == 0 ? lane.start : ReducePlace{lane.positions[used - 1], lane.values[lane.count - 1]};
    }
}

/// Puts values one after the other until `stop`, and counts what their bits look like.
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

/// Puts values from `place` on until it meets the chain of a lane; answers how many values of the lane come
/// before that. Nothing when they do not meet soon.
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

/// The place near `position` from which on the bits look most like those of the values so far.
ReducePlace ReduceLanes::GuessPlace(std::uint64_t position) const {
    std::array<ReducePlace, kPhases> at;
    for (std::size_t phase = 0; phase < kPhases; phase++)
        at[phase] = {position + phase, 0};
    // Where nothing tells them apart, the first is right for values that all stand in full.
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
