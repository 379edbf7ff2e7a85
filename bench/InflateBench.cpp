#include "CodecBench.h"
#include "Compare.h"
#include "archive/codec/Inflate.h"

#include <algorithm>
#include <libdeflate.h>
#include <zlib.h>

namespace bench {

codec::ByteBuffer BufferOf(const Bytes& bytes) {
    codec::ByteBuffer buffer(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer.Data());
    return buffer;
}

/// Our side pays for its output buffer; the peers' stands ready and warm.
void InflateBench(const std::vector<Sample>& samples) {
    libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
    for (const Sample& sample : samples) {
        const Bytes stream = DeflateByZlib(sample.bytes, 6);
        const std::size_t size = sample.bytes.size();
        Bytes out(size);

        codec::ByteBuffer data;
        const Side ours{"ours",
                        [&] {
                            const int status =
                                codec::Inflate(data, static_cast<std::int32_t>(size) - 1, false);
                            Require(status == 0 && data.Size() == size, sample.name);
                        },
                        [&] { data = BufferOf(stream); }};
        ours.prepare();
        ours.run();
        Require(std::equal(sample.bytes.begin(), sample.bytes.end(), data.Data()), sample.name);

        Compare("inflate-" + sample.name, size, ours,
                {"libdeflate",
                 [&] {
                     const auto result = libdeflate_deflate_decompress(
                         decompressor, stream.data(), stream.size(), out.data(), size, nullptr);
                     Require(result == LIBDEFLATE_SUCCESS, "libdeflate");
                 }},
                Clock::kProcessor);
        Compare("inflate-" + sample.name, size, ours,
                {"zlib",
                 [&] {
                     z_stream state{};
                     inflateInit2(&state, -15);
                     state.next_in = const_cast<Bytef*>(stream.data());
                     state.avail_in = static_cast<uInt>(stream.size());
                     state.next_out = out.data();
                     state.avail_out = static_cast<uInt>(size);
                     Require(inflate(&state, Z_FINISH) == Z_STREAM_END, "zlib");
                     inflateEnd(&state);
                 }},
                Clock::kProcessor);
    }
    libdeflate_free_decompressor(decompressor);
}

} // namespace bench
