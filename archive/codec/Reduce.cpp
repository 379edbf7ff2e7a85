#include "archive/codec/Reduce.h"

#include "archive/codec/ReduceDecoder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace codec {

namespace {

/// Output that is allowed for any input, so that a short damaged entry is still filled to its recorded size.
constexpr std::size_t kAlwaysGranted = std::size_t{1} << 20;

/// The most one input byte can yield: the four values of a long copy take at least two bits each, and a copy
/// is at most 127 + 255 + 3 bytes long.
constexpr std::size_t kMostPerByte = 127 + 255 + 3;

} // namespace

std::int16_t Unreduce(ByteBuffer& data, int method, std::int32_t lastIndex) {
    const std::size_t recorded = lastIndex < 0 ? 0 : static_cast<std::size_t>(lastIndex) + 1;
    const std::size_t size = std::min(recorded, std::max(kAlwaysGranted, data.Size() * kMostPerByte));
    ByteBuffer output(size);
    ReduceDecoder decoder(data.Span(), method - 1);
    decoder.Decode(output.Span());
    data = std::move(output);
    return 0;
}

} // namespace codec
