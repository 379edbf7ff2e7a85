#include "archive/codec/InflateRunner.h"
#include "support/DeflateWriter.h"
#include "support/RandomBytes.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>
#include <zlib.h>

using support::Below;
using support::Content;
using support::DeflateWriter;
using support::Random;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr Content kContents[] = {Content::kNoise, Content::kText, Content::kRuns, Content::kFewValues};

/// Lengths of a random complete code with `codes` symbols: a tree whose leaves are split at random.
Bytes RandomCode(Random& random, std::size_t symbols, std::size_t codes) {
    Bytes leaves = {1, 1};
    while (leaves.size() < codes) {
        std::uint8_t& leaf = leaves[Below(random, leaves.size())];
        if (leaf < 15)
            leaves.push_back(++leaf);
    }
    leaves.resize(symbols);
    std::shuffle(leaves.begin(), leaves.end(), random);
    return leaves;
}

/// Random blocks: any codes, any symbols, in the range of the mode or out of it.
Bytes RandomStream(Random& random, bool deflate64) {
    DeflateWriter writer;
    const std::size_t blocks = 1 + Below(random, 4);
    for (std::size_t block = 1; block <= blocks; block++) {
        const bool final = block == blocks;
        const std::size_t kind = Below(random, 5);
        if (kind == 0) {
            writer.Stored(final, support::RandomContent(random, Content::kNoise, Below(random, 70)));
            continue;
        }
        Bytes litLen(288, 1);
        Bytes distance(32, 1);
        if (kind == 1) {
            writer.Fixed(final);
        } else {
            const std::size_t symbols = 257 + Below(random, 32);
            litLen = RandomCode(random, symbols, 2 + Below(random, symbols - 2));
            const std::size_t distances = 2 + Below(random, 31);
            distance = RandomCode(random, distances, 2 + Below(random, distances - 1));
            writer.Dynamic(final, litLen, distance);
        }
        for (std::size_t n = Below(random, 3000); n > 0; n--) {
            const std::size_t symbol = Below(random, litLen.size());
            const std::size_t code = Below(random, distance.size());
            if (litLen[symbol] == 0 || distance[code] == 0 || symbol == 256)
                continue;
            unsigned extraBits = 0;
            if (symbol >= 265 && symbol < 285)
                extraBits = static_cast<unsigned>(symbol - 261) / 4;
            else if (symbol == 285 && deflate64)
                extraBits = 16;
            writer.LitLen(symbol, static_cast<std::uint32_t>(random()) & 0x3F, extraBits);
            if (symbol > 256)
                writer.Distance(code, static_cast<std::uint32_t>(Below(random, 1 + n)),
                                code < 2 ? 0 : static_cast<unsigned>(code / 2 - 1));
        }
        if (litLen[256] != 0)
            writer.EndOfBlock();
    }
    return writer.Stream();
}

Bytes ZlibDeflate(const Bytes& content, int level, int strategy, int flush) {
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, -15, 9, strategy), Z_OK);
    Bytes out(deflateBound(&stream, static_cast<uLong>(content.size())) + content.size() / 100 + 1000);
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    const std::size_t half = content.size() / 2;
    stream.next_in = const_cast<Bytef*>(content.data());
    stream.avail_in = static_cast<uInt>(half);
    deflate(&stream, flush);
    stream.avail_in += static_cast<uInt>(content.size() - half);
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

/// What zlib makes of a raw stream: whether it came to its end within `size` bytes, and the bytes.
std::pair<bool, Bytes> ZlibInflate(const Bytes& stream, std::size_t size) {
    z_stream state{};
    EXPECT_EQ(inflateInit2(&state, -15), Z_OK);
    Bytes out(size + 1);
    state.next_in = const_cast<Bytef*>(stream.data());
    state.avail_in = static_cast<uInt>(stream.size());
    state.next_out = out.data();
    state.avail_out = static_cast<uInt>(out.size());
    const bool ended = inflate(&state, Z_FINISH) == Z_STREAM_END && state.total_out <= size;
    out.resize(state.total_out);
    inflateEnd(&state);
    return {ended, out};
}

} // namespace

TEST(InflateRandom, StreamsOfAnotherCompressor) {
    Random random(1);
    for (const Content content : kContents)
        for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FILTERED, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED})
            for (const int level : {0, 1, 6, 9})
                for (const int flush : {Z_NO_FLUSH, Z_FULL_FLUSH}) {
                    const Bytes original = support::RandomContent(random, content, 1 + Below(random, 120000));
                    const Bytes stream = ZlibDeflate(original, level, strategy, flush);
                    const Inflated inflated = RunInflate(stream, original.size(), false);
                    ASSERT_EQ(inflated.status, 0) << "level " << level << ", strategy " << strategy;
                    ASSERT_TRUE(inflated.data == original) << "level " << level << ", strategy " << strategy;
                }
}

TEST(InflateRandom, AnyCodesAndSymbols) {
    Random random(2);
    int zlibEnded = 0;
    for (int round = 0; round < 400; round++) {
        const bool deflate64 = round % 2 == 1;
        const Bytes stream = RandomStream(random, deflate64);
        const std::size_t size = 1 + Below(random, 400000);
        SCOPED_TRACE(round);
        const Inflated inflated = RunInflate(stream, size, deflate64);
        // zlib knows fewer codes and a smaller window; what it takes to the end must be the same.
        if (const auto [ended, bytes] = ZlibInflate(stream, size); !deflate64 && ended) {
            EXPECT_TRUE(inflated.data == bytes);
            zlibEnded++;
        }
        if (HasFailure())
            break;
    }
    EXPECT_GT(zlibEnded, 0);
}

TEST(InflateRandom, DamagedAndShortenedStreams) {
    Random random(3);
    for (int round = 0; round < 600 && !HasFailure(); round++) {
        SCOPED_TRACE(round);
        const bool deflate64 = Below(random, 2) == 1;
        const Bytes original =
            support::RandomContent(random, kContents[Below(random, 4)], 1 + Below(random, 60000));
        Bytes stream = Below(random, 2) == 0 ? RandomStream(random, deflate64)
                                             : ZlibDeflate(original, static_cast<int>(1 + Below(random, 9)),
                                                           Z_DEFAULT_STRATEGY, Z_NO_FLUSH);
        for (std::size_t n = Below(random, 4); n > 0 && !stream.empty(); n--)
            stream[Below(random, stream.size())] ^= static_cast<std::uint8_t>(1u << Below(random, 8));
        if (Below(random, 2) == 0)
            stream.resize(Below(random, stream.size() + 1));
        RunInflate(stream, Below(random, 2 * original.size()), deflate64);
    }
}

TEST(InflateRandom, EveryCutOfAStreamAndEveryRecordedSize) {
    Random random(4);
    const Bytes original = support::RandomContent(random, Content::kText, 900);
    const Bytes stream = ZlibDeflate(original, 9, Z_DEFAULT_STRATEGY, Z_NO_FLUSH);
    for (std::size_t cut = 0; cut <= stream.size(); cut++)
        RunInflate({stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(cut)}, original.size(),
                   false);
    for (std::size_t size = 0; size <= original.size() + 400; size += 1 + size / 50)
        RunInflate(stream, size, false);
}
