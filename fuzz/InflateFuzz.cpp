#include "FuzzSupport.h"
#include "archive/codec/Inflate.h"

/// First byte: mode; next two: the recorded size; the rest is the stream. Every kernel must agree with
/// Inflate.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool deflate64 = (input.Byte() & 1) != 0;
    const std::size_t recorded = input.Number16();
    codec::ByteBuffer buffer = fuzz::BufferOf(input.Rest());
    const std::int16_t status = codec::Inflate(buffer, static_cast<std::int32_t>(recorded) - 1, deflate64);
    fuzz::Check(status == 0 || status == -1 || status == -2);
    fuzz::CheckKernels(input.Rest(), recorded, deflate64, status, buffer.Span());
    return 0;
}
