#include "ReduceDecoder.h"

#include <algorithm>
#include <bit>

namespace archive {

namespace {

constexpr std::uint8_t kEscape = 144;

/// Bits of an index into a set of `count` followers: what the numbers 0..count-1 need, but never none.
constexpr std::uint8_t IndexBits(unsigned count) {
    if (count == 0)
        return 0;
    return static_cast<std::uint8_t>(std::max(1, static_cast<int>(std::bit_width(count - 1))));
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
    : input_(input), factor_(static_cast<unsigned>(std::clamp(factor, 1, 4))) {}

std::uint32_t ReduceDecoder::ReduceReadBits(unsigned count) {
    while (bitCount_ < count) {
        const std::uint64_t byte = position_ < input_.size() ? input_[position_++] : 0;
        bits_ |= byte << bitCount_;
        bitCount_ += 8;
    }
    const auto value = static_cast<std::uint32_t>(bits_ & ((std::uint64_t{1} << count) - 1));
    bits_ >>= count;
    bitCount_ -= count;
    return value;
}

void ReduceDecoder::ReadFollowerSets() {
    for (std::size_t j = sets_.size(); j-- > 0;) {
        FollowerSet& set = sets_[j];
        set.count = static_cast<std::uint8_t>(std::min<std::uint32_t>(ReduceReadBits(6), kMostFollowers));
        set.indexBits = IndexBits(set.count);
        for (unsigned k = 0; k < set.count; k++)
            set.followers[k] = static_cast<std::uint8_t>(ReduceReadBits(8));
    }
}

std::uint8_t ReduceDecoder::NextByte() {
    const FollowerSet& set = sets_[last_];
    if (set.count == 0 || ReduceReadBits(1) == 1)
        last_ = static_cast<std::uint8_t>(ReduceReadBits(8));
    else
        last_ = set.followers[ReduceReadBits(set.indexBits)];
    return last_;
}

void ReduceDecoder::Decode(std::span<std::uint8_t> output) {
    const std::uint32_t lengthMask = (1u << (8 - factor_)) - 1;
    const unsigned distanceShift = 8 - factor_;
    ReadFollowerSets();
    last_ = 0;
    for (std::size_t at = 0; at < output.size();) {
        std::uint8_t value = NextByte();
        if (value != kEscape) {
            output[at++] = value;
            continue;
        }
        value = NextByte();
        if (value == 0) {
            output[at++] = kEscape;
            continue;
        }
        std::size_t length = value & lengthMask;
        std::size_t distance = (std::size_t{value} >> distanceShift) * 256;
        if (length == lengthMask)
            length += NextByte();
        distance += std::size_t{NextByte()} + 1;
        at = CopyBack(output, at, distance, length + 3);
    }
}

} // namespace archive
