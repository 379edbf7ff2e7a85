#include "archive/codec/ReduceOutput.h"

#include "archive/codec/InflateBits.h"
#include "archive/codec/MatchCopy.h"
#include "base/LittleEndian.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace codec {

namespace {

constexpr std::uint8_t kEscape = 144;
constexpr std::size_t kLeastLength = 3;

/// Values that the fast loop reads in one round: eight, and a copy that starts with the last of them.
constexpr std::size_t kFastValues = 8 + 3;

/// Bytes that the fast loop writes in one round: those before a copy, the longest copy, and what a wide copy
/// writes beyond it.
constexpr std::size_t kFastSpace = 8 + 127 + 255 + kLeastLength + 32;

/// How many of eight bytes come before the first escape.
unsigned BytesBeforeEscape(std::uint64_t bytes) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    // A byte is 0 where an escape stands; the lowest 0 is the lowest byte whose top bit is left.
    const std::uint64_t differs = bytes ^ (kOnes * kEscape);
    return static_cast<unsigned>(std::countr_zero((differs - kOnes) & ~differs & (kOnes << 7))) / 8;
}

} // namespace

ReduceOutput::ReduceOutput(std::span<std::uint8_t> room, unsigned factor)
    : room_(room), distanceShift_(8 - factor), lengthMask_((std::size_t{1} << distanceShift_) - 1) {}

void ReduceOutput::Put(std::uint8_t value) {
    if (Full())
        return;
    switch (state_) {
    case State::kPlain:
        if (value == kEscape)
            state_ = State::kEscaped;
        else
            room_[at_++] = value;
        break;
    case State::kEscaped:
        if (value == 0) {
            room_[at_++] = kEscape;
            state_ = State::kPlain;
            break;
        }
        length_ = value & lengthMask_;
        distance_ = std::size_t{value} >> distanceShift_ << 8;
        state_ = length_ == lengthMask_ ? State::kLength : State::kDistance;
        break;
    case State::kLength:
        length_ += value;
        state_ = State::kDistance;
        break;
    case State::kDistance:
        Copy(distance_ + value + 1, length_ + kLeastLength);
        state_ = State::kPlain;
        break;
    }
}

void ReduceOutput::Put(std::span<const std::uint8_t> values) {
    std::size_t i = 0;
    for (; state_ != State::kPlain && i < values.size(); i++)
        Put(values[i]);
    i += PutFast(values.subspan(i));
    for (; i < values.size(); i++)
        Put(values[i]);
}

/// Handles values quickly as long as neither the values nor the room end soon. Returns how many values it
/// handled.
std::size_t ReduceOutput::PutFast(std::span<const std::uint8_t> values) {
    if (values.size() < kFastValues || room_.size() < kFastSpace)
        return 0;
    const std::uint8_t* next = values.data();
    const std::uint8_t* const lastNext = next + values.size() - kFastValues;
    std::uint8_t* out = room_.data() + at_;
    const std::uint8_t* const lastOut = room_.data() + room_.size() - kFastSpace;
    while (next <= lastNext && out <= lastOut) {
        const unsigned plain = BytesBeforeEscape(base::LoadLittle64(next));
        std::memcpy(out, next, 8);
        out += plain;
        next += plain;
        if (plain == 8)
            continue;
        const std::uint8_t first = next[1];
        if (first == 0) {
            *out++ = kEscape;
            next += 2;
            continue;
        }
        const std::size_t coded = first & lengthMask_;
        const std::size_t more = next[2];
        const bool isLong = coded == lengthMask_;
        const std::size_t length = coded + kLeastLength + (isLong ? more : 0);
        next += isLong ? 3 : 2;
        const std::size_t distance = (std::size_t{first} >> distanceShift_ << 8) + *next++ + 1;
        at_ = static_cast<std::size_t>(out - room_.data());
        if (distance > at_) [[unlikely]]
            Copy(distance, length);
        else if (distance >= 16) [[likely]]
            CopyMatchChunks(out, out - distance, out + length);
        else
            CopyNear(out, distance, length);
        out += length;
    }
    at_ = static_cast<std::size_t>(out - room_.data());
    return static_cast<std::size_t>(next - values.data());
}

/// Copies byte by byte, so that an overlapping copy repeats; positions before the start read as 0.
void ReduceOutput::Copy(std::size_t distance, std::size_t length) {
    const std::size_t end = at_ + std::min(length, room_.size() - at_);
    for (; at_ < end && at_ < distance; at_++)
        room_[at_] = 0;
    for (; at_ < end; at_++)
        room_[at_] = room_[at_ - distance];
}

} // namespace codec
