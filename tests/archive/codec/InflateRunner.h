#pragma once

#include "archive/codec/Inflate.h"
#include "archive/codec/InflateDecoder.h"
#include "archive/codec/InflateKernels.h"
#include "fakes/RecordingMessages.h"
#include "support/GuardedMemory.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <span>
#include <vector>

/// What one stream became.
struct Inflated {
    int status = 0;
    std::vector<std::uint8_t> data; ///< as the caller finds it: decoded, or the input after a table error
    std::vector<std::uint32_t> messages;
};

/// The whole of a guarded array from the start, so that a decoder can neither grow it nor pass it.
class FixedOutput : public codec::InflateOutput {
  public:
    explicit FixedOutput(std::span<std::uint8_t> space) : space_(space) {}

    std::span<std::uint8_t> Grow(std::size_t, std::size_t) override { return space_; }

  private:
    std::span<std::uint8_t> space_;
};

inline codec::ByteBuffer BufferOf(std::span<const std::uint8_t> bytes) {
    codec::ByteBuffer buffer(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer.Data());
    return buffer;
}

inline std::vector<std::uint8_t> BytesOf(const codec::ByteBuffer& buffer) {
    return {buffer.Data(), buffer.Data() + buffer.Size()};
}

/// A kernel without a fast loop: every symbol is decoded by itself, from its tables alone. It is the control of the others.
inline const codec::InflateKernel kSymbolBySymbol{
    "symbol by symbol", [](codec::InflateBits&, std::uint8_t*, std::size_t&, std::size_t,
                           const codec::InflateTables&) { return codec::FastLoopEnd::kMargins; }};

/// Decodes `stream` into at most `size` bytes through Inflate, then in pieces, then with every kernel between
/// guard pages, and expects all of them to agree.
inline Inflated RunInflate(std::span<const std::uint8_t> stream, std::size_t size, bool deflate64) {
    fakes::RecordingMessages messages;
    codec::ByteBuffer data = BufferOf(stream);
    Inflated inflated;
    inflated.status = codec::Inflate(data, static_cast<std::int32_t>(size) - 1, deflate64);
    inflated.data = BytesOf(data);
    inflated.messages = messages.Ids();
    for (const app::Message& message : messages.shown)
        EXPECT_EQ(message.flags, app::kMessageWarning);

    std::vector<std::uint8_t> pieces;
    const bool isGood = codec::InflateInPieces(stream, static_cast<std::int32_t>(size) - 1, deflate64,
                                               [&](std::span<const std::uint8_t> piece) {
                                                   pieces.insert(pieces.end(), piece.begin(), piece.end());
                                               });
    EXPECT_EQ(isGood, inflated.messages.empty());
    EXPECT_TRUE(!isGood || pieces == inflated.data);

    const support::GuardedMemory input(stream);
    std::vector<const codec::InflateKernel*> kernels = codec::InflateKernels();
    kernels.push_back(&kSymbolBySymbol);
    for (const codec::InflateKernel* kernel : kernels) {
        const support::GuardedMemory space(size);
        FixedOutput output(space.Bytes());
        const codec::InflateResult result =
            codec::InflateDecoder(input.Bytes(), output, size, deflate64, *kernel).Decode();
        EXPECT_EQ(result.status, inflated.status) << kernel->name;
        EXPECT_EQ(result.badTable, !inflated.messages.empty()) << kernel->name;
        if (result.badTable) {
            EXPECT_TRUE(std::ranges::equal(inflated.data, stream)) << kernel->name;
        } else {
            EXPECT_TRUE(std::ranges::equal(inflated.data, space.Bytes().first(result.produced)))
                << kernel->name;
        }
    }
    return inflated;
}
