#include "FuzzSupport.h"
#include "archive/Mod_Reduce.h"

/// First byte: factor; next two: the recorded size; the rest is the stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const int method = 2 + input.Byte() % 4;
    const std::size_t recorded = input.Number16();
    archive::ByteBuffer buffer = fuzz::BufferOf(input.Rest());
    fuzz::Check(archive::Unreduce(buffer, method, static_cast<std::int32_t>(recorded) - 1) == 0);
    fuzz::Check(buffer.Size() == recorded);
    return 0;
}
