#include "FuzzSupport.h"
#include "archive/codec/ReduceDecoder.h"
#include "support/PlainReduce.h"

/// First byte: factor, and length of a lane; next two: the recorded size; the rest is the stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const unsigned how = input.Byte();
    const unsigned factor = 1 + how % 4;
    const std::size_t recorded = input.Number16();
    const codec::ByteBuffer stream = fuzz::BufferOf(input.Rest());
    codec::ByteBuffer output(recorded);
    codec::ReduceDecoder(stream.Span(), static_cast<int>(factor), 16 + how).Decode(output.Span());
    fuzz::Check(std::ranges::equal(output.Span(), support::PlainUnreduce(stream.Span(), factor, recorded)));
    return 0;
}
