#include "archive/codec/ReduceDecoder.h"

#include "archive/codec/InflateBits.h"
#include "archive/codec/ReduceOutput.h"

#include <algorithm>

namespace codec {

ReduceDecoder::ReduceDecoder(std::span<const std::uint8_t> input, int factor, std::size_t laneBytes)
    : input_(input), factor_(static_cast<unsigned>(std::clamp(factor, 1, 4))), laneBytes_(laneBytes) {}

void ReduceDecoder::Decode(std::span<std::uint8_t> room) {
    InflateBits bits(input_);
    followers_.Read(bits);
    ReduceOutput output(room, factor_);
    ReducePlace place{bits.BitPosition(), 0};
    const std::uint64_t start = place.position;
    ReduceLanes(input_, followers_, laneBytes_).Decode(place, output);
    if (place.position != start)
        bits.SeekBit(place.position);
    while (!output.Full()) {
        bits.Refill();
        bits.DropBits(followers_.Step(bits.buffer, place.last));
        output.Put(static_cast<std::uint8_t>(place.last));
    }
}

} // namespace codec
