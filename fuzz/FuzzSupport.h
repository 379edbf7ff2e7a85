#pragma once

#include "archive/codec/ByteBuffer.h"
#include "archive/codec/InflateDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace fuzz {

inline void Check(bool good) {
    if (!good)
        std::abort();
}

/// A fuzzer's bytes, taken from the front; 0 when there are none left.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

    std::uint8_t Byte() {
        if (bytes_.empty())
            return 0;
        const std::uint8_t byte = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return byte;
    }

    std::size_t Number16() {
        const std::size_t low = Byte();
        return low | std::size_t{Byte()} << 8;
    }

    std::span<const std::uint8_t> Rest() const { return bytes_; }

  private:
    std::span<const std::uint8_t> bytes_;
};

/// A heap block of exactly that size, for the sanitizer to watch both ends.
inline codec::ByteBuffer BufferOf(std::span<const std::uint8_t> bytes) {
    codec::ByteBuffer buffer(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer.Data());
    return buffer;
}

/// Decodes with each kernel into a block of exactly the recorded size and compares with what Inflate
/// returned.
inline void CheckKernels(std::span<const std::uint8_t> stream, std::size_t recorded, bool deflate64,
                         int status, std::span<const std::uint8_t> data) {
    struct Output : codec::InflateOutput {
        std::vector<std::uint8_t> bytes;

        std::span<std::uint8_t> Grow(std::size_t, std::size_t) override { return bytes; }
    };

    for (const codec::InflateKernel* kernel : codec::InflateKernels()) {
        Output output;
        output.bytes.resize(recorded);
        codec::InflateDecoder decoder(stream, output, recorded, deflate64, *kernel);
        const codec::InflateResult result = decoder.Decode();
        Check(result.status == status);
        Check(std::ranges::equal(data,
                                 result.badTable ? stream : std::span(output.bytes).first(result.produced)));
    }
}

} // namespace fuzz
