#include "CodecBench.h"
#include "Compare.h"
#include "archive/codec/Reduce.h"
#include "support/PlainReduce.h"
#include "support/ReduceWriter.h"

#include <algorithm>

namespace bench {

/// Source text reduced by each factor; the plain decoder pays for its output as ours does.
void ReduceBench(const std::vector<Sample>& samples) {
    const Bytes& text = samples.front().bytes;
    for (unsigned factor = 1; factor <= 4; factor++) {
        const std::string what = "reduce-" + std::to_string(factor);
        const Bytes stream = support::ReduceWriter(factor).Compress(text);
        codec::ByteBuffer data;
        Bytes plain;
        Compare(what, text.size(),
                {"ours",
                 [&] {
                     codec::Unreduce(data, static_cast<int>(factor) + 1,
                                     static_cast<std::int32_t>(text.size()) - 1);
                 },
                 [&] { data = BufferOf(stream); }},
                {"plain", [&] { plain = support::PlainUnreduce(stream, factor, text.size()); }},
                Clock::kProcessor);
        Require(plain == text && std::equal(plain.begin(), plain.end(), data.Data()), what);
    }
}

} // namespace bench
