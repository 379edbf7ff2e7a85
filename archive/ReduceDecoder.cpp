#include "ReduceDecoder.h"

#include "MatchCopy.h"

#include <algorithm>
#include <bit>

namespace archive {

namespace {

constexpr std::uint8_t kEscape = 144;

/// A step of the fast loop reads eight bytes, and writes at most one copy and what a wide copy adds to it.
constexpr std::size_t kFastInput = 16;
constexpr std::size_t kFastSpace = 127 + 255 + 3 + 64;

/// Bits of an index into a set of `count` followers: what the numbers 0..count-1 need, but never none.
constexpr unsigned IndexBits(unsigned count) {
    if (count == 0)
        return 0;
    return static_cast<unsigned>(std::max(1, static_cast<int>(std::bit_width(count - 1))));
}

static_assert(IndexBits(1) == 1 && IndexBits(2) == 1 && IndexBits(3) == 2 && IndexBits(4) == 2);
static_assert(IndexBits(5) == 3 && IndexBits(16) == 4 && IndexBits(17) == 5 && IndexBits(32) == 5);

/// Copies byte by byte, so that an overlapping copy repeats; positions before the start read as 0.
/// Returns the position after the copy, which ends with the output.
std::size_t CopyBack(std::span<std::uint8_t> output, std::size_t at, std::size_t distance,
                     std::size_t length) {
    const std::size_t end = at + std::min(length, output.size() - at);
    for (; at < end && at < distance; at++)
        output[at] = 0;
    for (; at < end; at++)
        output[at] = output[at - distance];
    return end;
}

} // namespace

ReduceDecoder::ReduceDecoder(std::span<const std::uint8_t> input, int factor)
    : bits_(input), factor_(static_cast<unsigned>(std::clamp(factor, 1, 4))) {}

void ReduceDecoder::ReadFollowerSets() {
    for (std::size_t j = followers_.size(); j-- > 0;) {
        const unsigned count = std::min(bits_.GetBits(6), kMostFollowers);
        const unsigned indexBits = IndexBits(count);
        plain_[j] = {count == 0, count != 0};
        if (count == 0)
            continue;
        // An index past the set reads as 0.
        std::array<Follower, kMostFollowers>& row = followers_[j];
        const std::size_t indexes = std::size_t{1} << indexBits;
        for (std::size_t k = 0; k < indexes; k++)
            row[k] = {k < count ? static_cast<std::uint8_t>(bits_.GetBits(8)) : std::uint8_t{0},
                      static_cast<std::uint8_t>(indexBits + 1)};
        for (std::size_t filled = indexes; filled < row.size(); filled *= 2)
            std::copy_n(row.begin(), filled, row.begin() + static_cast<std::ptrdiff_t>(filled));
    }
}

/// Reads values, in registers as far as the caller's loop allows. At least nine bits must be in the buffer.
struct ReduceDecoder::Values {
    InflateBits bits;
    std::size_t last;
    const Follower* followers;
    const Plain* plain;

    [[gnu::always_inline]] std::uint8_t Next() {
        const Plain how = plain[last];
        const Follower follower = followers[last * kMostFollowers + (bits.buffer >> 1) % kMostFollowers];
        const bool isPlain = ((bits.buffer & 1) | how.always) != 0;
        const auto value = static_cast<std::uint8_t>(bits.buffer >> how.flagBits);
        last = isPlain ? value : follower.value;
        bits.DropBits(isPlain ? 8u + how.flagBits : follower.bits);
        return static_cast<std::uint8_t>(last);
    }
};

void ReduceDecoder::DecodeFast(Values& state, std::span<std::uint8_t> output, std::size_t& at) const {
    if (output.size() < kFastSpace)
        return;
    Values values = state;
    const unsigned distanceShift = 8 - factor_;
    const std::size_t lengthMask = (std::size_t{1} << distanceShift) - 1;
    const std::uint8_t* const space = output.data();
    std::uint8_t* out = output.data() + at;
    const std::uint8_t* const outLast = output.data() + output.size() - kFastSpace;
    while (out <= outLast && static_cast<std::size_t>(values.bits.end - values.bits.next) >= kFastInput) {
        // 56 bits: six values.
        values.bits.Refill();
        std::uint8_t value = values.Next();
        for (int n = 1; n < 5 && value != kEscape; n++) {
            *out++ = value;
            value = values.Next();
        }
        if (value != kEscape) {
            *out++ = value;
            continue;
        }
        values.bits.Refill();
        value = values.Next();
        if (value == 0) {
            *out++ = kEscape;
            continue;
        }
        std::size_t length = value & lengthMask;
        std::size_t distance = (std::size_t{value} >> distanceShift) * 256 + 1;
        if (length == lengthMask)
            length += values.Next();
        length += 3;
        distance += values.Next();
        const auto reach = static_cast<std::size_t>(out - space);
        if (distance >= 16 && distance <= reach)
            CopyMatchChunks(out, out - distance, out + length);
        else
            CopyBack(output, reach, distance, length);
        out += length;
    }
    at = static_cast<std::size_t>(out - space);
    state = values;
}

void ReduceDecoder::DecodeStep(Values& values, std::span<std::uint8_t> output, std::size_t& at) const {
    values.bits.Refill();
    std::uint8_t value = values.Next();
    if (value != kEscape) {
        output[at++] = value;
        return;
    }
    value = values.Next();
    if (value == 0) {
        output[at++] = kEscape;
        return;
    }
    const std::size_t lengthMask = (std::size_t{1} << (8 - factor_)) - 1;
    std::size_t length = value & lengthMask;
    const std::size_t distance = (std::size_t{value} >> (8 - factor_)) * 256 + 1;
    if (length == lengthMask)
        length += values.Next();
    at = CopyBack(output, at, distance + values.Next(), length + 3);
}

void ReduceDecoder::Decode(std::span<std::uint8_t> output) {
    ReadFollowerSets();
    Values values{bits_, 0, followers_[0].data(), plain_.data()};
    std::size_t at = 0;
    DecodeFast(values, output, at);
    while (at < output.size())
        DecodeStep(values, output, at);
}

} // namespace archive
