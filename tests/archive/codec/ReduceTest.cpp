#include "archive/codec/Reduce.h"

#include "archive/codec/InflateRunner.h"
#include "archive/codec/ReduceDecoder.h"
#include "support/BitWriter.h"
#include "support/PlainReduce.h"
#include "support/RandomBytes.h"
#include "support/ReduceWriter.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Decodes through Unreduce, then between guard pages with lanes of several lengths; all must agree with the
/// control.
Bytes RunUnreduce(const Bytes& stream, int factor, std::size_t size) {
    codec::ByteBuffer data = BufferOf(stream);
    EXPECT_EQ(codec::Unreduce(data, factor + 1, static_cast<std::int32_t>(size) - 1), 0);
    EXPECT_TRUE(BytesOf(data) == support::PlainUnreduce(stream, static_cast<unsigned>(factor), data.Size()));
    const support::GuardedMemory input(stream);
    for (const std::size_t laneBytes : {16u, 100u, 512u}) {
        const support::GuardedMemory output(data.Size());
        codec::ReduceDecoder(input.Bytes(), factor, laneBytes).Decode(output.Bytes());
        EXPECT_TRUE(std::ranges::equal(data.Span(), output.Bytes())) << "lanes of " << laneBytes;
    }
    return BytesOf(data);
}

/// A stream without follower sets: each byte stands in eight bits.
Bytes Plain(const Bytes& bytes) {
    support::BitWriter writer;
    for (int j = 0; j < 256; j++)
        writer.Bits(0, 6);
    return writer.Bytes(bytes).Stream();
}

} // namespace

TEST(Reduce, EscapesAndCopiesOfEachFactor) {
    EXPECT_EQ(RunUnreduce(Plain({'a', 144, 0, 'b'}), 1, 3), (Bytes{'a', 144, 'b'}));

    Bytes history(300);
    for (std::size_t i = 0; i < history.size(); i++)
        history[i] = static_cast<std::uint8_t>(i % 101);
    const auto check = [&](int factor, const Bytes& escape, std::size_t distance, std::size_t length) {
        Bytes coded = history;
        coded.insert(coded.end(), escape.begin(), escape.end());
        Bytes expected = history;
        for (std::size_t i = 0; i < length; i++)
            expected.push_back(expected[expected.size() - distance]);
        EXPECT_EQ(RunUnreduce(Plain(coded), factor, expected.size()), expected) << "factor " << factor;
    };
    check(1, {144, 0x85, 0x02}, 259, 8);
    check(2, {144, 0x41, 0x00}, 257, 4);
    check(3, {144, 0x1F, 0x05, 0x07}, 8, 31 + 5 + 3);
    check(4, {144, 0x0F, 0x00, 0x00}, 1, 15 + 3); // a full length takes one more byte, be it 0
    check(4, {144, 0x1F, 0xFF, 0x0A}, 267, 15 + 255 + 3);
}

TEST(Reduce, StaysWithinItsBuffers) {
    // A copy is cut where the recorded size is reached; positions before the start read as 0.
    EXPECT_EQ(RunUnreduce(Plain({'a', 144, 0x05, 0x00}), 1, 4), (Bytes{'a', 'a', 'a', 'a'}));
    EXPECT_EQ(RunUnreduce(Plain({'a', 144, 0x02, 0x02}), 1, 6), (Bytes{'a', 0, 0, 'a', 0, 0}));
    // Input that ends early reads as zero bits.
    EXPECT_EQ(RunUnreduce(Plain({'a', 'b'}), 1, 5), (Bytes{'a', 'b', 0, 0, 0}));
    EXPECT_EQ(RunUnreduce({}, 4, 3), Bytes(3, 0));
    EXPECT_EQ(RunUnreduce(Plain({'a'}), 1, 0), Bytes());
    // A record of two gigabytes for a few bytes of input takes no such memory.
    codec::ByteBuffer data = BufferOf(Plain({'a'}));
    EXPECT_EQ(codec::Unreduce(data, 2, 0x7FFFFFFE), 0);
    EXPECT_LE(data.Size(), std::size_t{1} << 20);
}

TEST(Reduce, WhatWasReducedComesBackAndDamageIsTheSameForAll) {
    support::Random random(7);
    for (int factor = 1; factor <= 4; factor++)
        for (const auto content : {support::Content::kNoise, support::Content::kText, support::Content::kRuns,
                                   support::Content::kFewValues})
            for (const std::size_t followers : {0u, 1u, 3u, 5u, 32u}) {
                SCOPED_TRACE(std::to_string(factor) + " with " + std::to_string(followers) + " followers");
                const Bytes original =
                    support::RandomContent(random, content, 1 + support::Below(random, 60000));
                Bytes stream =
                    support::ReduceWriter(static_cast<unsigned>(factor)).Compress(original, followers);
                ASSERT_TRUE(RunUnreduce(stream, factor, original.size()) == original);
                for (int n = 0; n < 5; n++)
                    stream[support::Below(random, stream.size())] ^= 0x10;
                ASSERT_EQ(RunUnreduce(stream, factor, original.size()).size(), original.size());
            }
}

TEST(Reduce, AnyBytesFillTheRecordedSize) {
    support::Random random(8);
    for (int round = 0; round < 200; round++) {
        const Bytes stream =
            support::RandomContent(random, support::Content::kNoise, support::Below(random, 30000));
        const std::size_t size = support::Below(random, 60000);
        ASSERT_EQ(RunUnreduce(stream, 1 + round % 4, size).size(), size);
    }
}
