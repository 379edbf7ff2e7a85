#include "FuzzSupport.h"
#include "archive/codec/Inflate.h"

/// First byte: mode; next two: the recorded size in units of 64 bytes, so that there is more than one piece;
/// the rest is the stream. The pieces must be what Inflate makes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool deflate64 = (input.Byte() & 1) != 0;
    const auto lastIndex = static_cast<std::int32_t>(input.Number16() * 64) - 1;
    const codec::ByteBuffer stream = fuzz::BufferOf(input.Rest());
    std::vector<std::uint8_t> pieces;
    const bool good =
        codec::InflateInPieces(stream.Span(), lastIndex, deflate64, [&](std::span<const std::uint8_t> piece) {
            pieces.insert(pieces.end(), piece.begin(), piece.end());
        });
    codec::ByteBuffer whole = fuzz::BufferOf(stream.Span());
    codec::Inflate(whole, lastIndex, deflate64);
    fuzz::Check(
        std::ranges::equal(whole.Span(), good ? std::span<const std::uint8_t>(pieces) : stream.Span()));
    return 0;
}
