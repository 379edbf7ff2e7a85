#include "app/TextIds.h"
#include "archive/codec/InflateRunner.h"
#include "support/DeflateWriter.h"
#include "support/RandomBytes.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

using support::DeflateWriter;
using support::Lengths;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr bool kModes[] = {false, true};

Bytes Text(std::string_view text) {
    return {text.begin(), text.end()};
}

/// Expects decoded data, whatever the status was.
void ExpectData(const Inflated& inflated, int status, const Bytes& data) {
    EXPECT_EQ(inflated.status, status);
    EXPECT_EQ(inflated.data, data);
    EXPECT_TRUE(inflated.messages.empty());
}

/// Expects that a code was refused: the message, and the compressed bytes left as they were.
void ExpectRefused(const Bytes& stream, int status = 0) {
    for (const bool deflate64 : kModes) {
        const Inflated inflated = RunInflate(stream, 1000, deflate64);
        EXPECT_EQ(inflated.status, status);
        EXPECT_EQ(inflated.data, stream);
        EXPECT_EQ(inflated.messages, std::vector<std::uint32_t>{IDS_DAMAGED_DATA});
    }
}

} // namespace

TEST(Inflate, EmptyStreamGivesNothing) {
    ExpectData(RunInflate(Bytes{0x03, 0x00}, 0, false), 0, {});
    // No input at all reads as a stored block that is not there; a negative size as none.
    ExpectData(RunInflate({}, 10, false), -1, {});
    codec::ByteBuffer data = BufferOf(Bytes{0x03, 0x00});
    EXPECT_EQ(codec::Inflate(data, -2, false), 0);
    EXPECT_EQ(data.Size(), 0u);
}

TEST(Inflate, ShortStoredBlockAfterCodesIsKept) {
    // The last block's few bytes are all that follows the codes: they are there, however far the bits were
    // read.
    for (std::size_t size = 1; size <= 3; size++) {
        const Bytes tail(size, '!');
        DeflateWriter writer;
        writer.Fixed(false).Literals(Text("ab")).EndOfBlock().Stored(true, tail);
        Bytes expected = Text("ab");
        expected.insert(expected.end(), tail.begin(), tail.end());
        ExpectData(RunInflate(writer.Stream(), 2 + size, false), 0, expected);
    }
}

TEST(Inflate, EmptyStoredBlockAtTheVeryEndLosesNothing) {
    DeflateWriter writer;
    writer.Fixed(false).Literals(Text("flushed")).EndOfBlock().Stored(true, {});
    ExpectData(RunInflate(writer.Stream(), 7, false), -1, Text("flushed"));
    // With any byte behind it the block is as good as every other.
    Bytes longer = writer.Stream();
    longer.push_back(0);
    ExpectData(RunInflate(longer, 7, false), 0, Text("flushed"));
}

TEST(Inflate, StoredLengthCheckFailsButDecodingGoesOn) {
    const Bytes bytes = Text("odd");
    for (const std::uint32_t wrongBit : {0x0001u, 0x0080u, 0x0100u, 0x8000u}) {
        DeflateWriter writer;
        writer.StoredWith(false, 3, 0xFFFC ^ wrongBit, bytes).Fixed(true).Literals(Text("end")).EndOfBlock();
        ExpectData(RunInflate(writer.Stream(), 6, false), -2, Text("oddend"));
    }

    DeflateWriter refused;
    refused.StoredWith(false, 3, 0x1234, bytes).Dynamic(true, Lengths(257, {{256, 1}}), {1, 1});
    ExpectRefused(refused.Stream(), -2);

    DeflateWriter stopped;
    stopped.StoredWith(false, 3, 0x1234, bytes).Header(true, DeflateWriter::kInvalid);
    ExpectData(RunInflate(stopped.Stream(), 6, false), -1, bytes);
}

TEST(Inflate, WhatDoesNotFitStopsTheStreamAndKeepsWhatCameBefore) {
    const Bytes before = Text("kept");
    const auto start = [&] {
        DeflateWriter writer;
        writer.Stored(false, before).Fixed(true);
        return writer;
    };
    // A stored block past the input, and one past the output: none of it is copied.
    ExpectData(RunInflate(DeflateWriter().Stored(false, before).StoredWith(true, 9, 0xFFF6, before).Stream(),
                          90, false),
               -1, before);
    ExpectData(RunInflate(DeflateWriter().Stored(false, before).Stored(true, before).Stream(), 7, false), -1,
               before);
    // An invalid block type.
    ExpectData(
        RunInflate(DeflateWriter().Stored(false, before).Header(true, DeflateWriter::kInvalid).Stream(), 9,
                   false),
        -1, before);
    // A literal, and a match of which only the first two bytes would fit: none of it is copied either.
    ExpectData(RunInflate(start().LitLen('x').EndOfBlock().Stream(), 4, false), -1, before);
    ExpectData(RunInflate(start().LitLen(257).Distance(0).EndOfBlock().Stream(), 6, false), -1, before);
    // A distance of five where four bytes are.
    ExpectData(RunInflate(start().LitLen(257).Distance(4, 0, 1).EndOfBlock().Stream(), 90, false), -1,
               before);
}

TEST(Inflate, FarDistancesAreDecodedInBothModes) {
    support::Random random(30);
    const Bytes noise = support::RandomContent(random, support::Content::kNoise, 65535);
    for (const bool deflate64 : kModes) {
        // The bases of codes 29 (the last of RFC 1951), 30 and 31, and the farthest distance of all.
        const struct {
            std::size_t code;
            std::uint32_t extra;
            unsigned extraBits;
            std::size_t distance;
        } cases[] = {{29, 8191, 13, 32768}, {30, 0, 14, 32769}, {31, 0, 14, 49153}, {31, 16382, 14, 65535}};

        for (const auto& c : cases) {
            DeflateWriter writer;
            writer.Stored(false, noise)
                .Fixed(true)
                .LitLen(258)
                .Distance(c.code, c.extra, c.extraBits)
                .EndOfBlock();
            Bytes expected = noise;
            for (int i = 0; i < 4; i++)
                expected.push_back(expected[expected.size() - c.distance]);
            ExpectData(RunInflate(writer.Stream(), expected.size(), deflate64), 0, expected);
        }
    }
}

TEST(Inflate, RefusedCodes) {
    const Bytes twoDistances = {1, 1};
    const Bytes good = Lengths(257, {{'a', 1}, {256, 1}});
    const auto dynamic = [](const Bytes& litLen, const Bytes& distance) {
        DeflateWriter writer;
        writer.Dynamic(true, litLen, distance);
        writer.Bits().Bits(0, 32);
        return writer.Stream();
    };
    // The control: the same writer with two good codes is taken.
    ExpectData(RunInflate(DeflateWriter().Dynamic(true, good, twoDistances).LitLen('a').EndOfBlock().Stream(),
                          1, false),
               0, Text("a"));
    ExpectRefused(dynamic(good, {1}));                              // one distance code of one bit
    ExpectRefused(dynamic(good, {0}));                              // no distance code
    ExpectRefused(dynamic(good, {1, 1, 1}));                        // one too many
    ExpectRefused(dynamic(good, {2, 2, 2}));                        // one too few
    ExpectRefused(dynamic(Lengths(257, {{256, 1}}), twoDistances)); // only the end of block
    ExpectRefused(dynamic(Bytes(257), twoDistances));               // no literal/length code
    ExpectRefused(
        dynamic(Lengths(257, {{0, 1}, {1, 1}, {256, 15}}), twoDistances)); // over-subscribed by the longest
    ExpectRefused(
        dynamic(Lengths(257, {{0, 1}, {1, 2}, {256, 15}}), twoDistances)); // incomplete in the second table
}

TEST(Inflate, RefusedCodeLengths) {
    const auto header = [](std::size_t litLen, std::size_t distance) {
        DeflateWriter writer;
        writer.Header(true, DeflateWriter::kDynamic).Counts(litLen, distance, 18);
        return writer;
    };
    // Code-length code, in the order 16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1:
    //   symbol  1: one bit, 0      symbol 16: two bits, 10      symbol 18: two bits, 11
    const auto lengths = [](DeflateWriter& writer) -> support::BitWriter& {
        for (const std::uint32_t length :
             {2u, 0u, 2u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 0u, 1u})
            writer.Bits().Bits(length, 3);
        return writer.Bits();
    };
    DeflateWriter first = header(257, 2);
    lengths(first).Code(0b10, 2).Bits(0, 2).Code(0b11, 2).Bits(127, 7).Code(0b11, 2).Bits(103, 7);
    first.Bits().Code(0, 1).Code(0b10, 2).Bits(0, 2).Code(0, 1).Code(1, 1);
    ExpectRefused(first.Stream()); // a repeat with nothing before it, of which three zeros would fit

    // 138 + 117 zeros, codes for 255 and 256, codes for both distances.
    DeflateWriter fits = header(257, 2);
    lengths(fits).Code(0b11, 2).Bits(127, 7).Code(0b11, 2).Bits(106, 7).Code(0, 1).Code(0b10, 2).Bits(0, 2);
    fits.Bits().Code(0, 1).Code(1, 1);
    ExpectData(RunInflate(fits.Stream(), 1, false), 0, {255});

    DeflateWriter past = header(257, 2);
    lengths(past).Code(0b11, 2).Bits(127, 7).Code(0b11, 2).Bits(106, 7).Code(0, 1).Code(0b10, 2).Bits(1, 2);
    ExpectRefused(past.Stream()); // the same repeat, one longer

    DeflateWriter none = header(257, 2);
    for (int i = 0; i < 18; i++)
        none.Bits().Bits(0, 3);
    ExpectRefused(none.Stream()); // a code-length code without codes

    DeflateWriter single = header(257, 2);
    for (int i = 0; i < 18; i++)
        single.Bits().Bits(i == 17, 3);
    ExpectRefused(single.Stream()); // and one with a single code
}

TEST(Inflate, LongestCodesAndSymbols) {
    // Code lengths 1 to 15 and 15 again reach through every width, for literals and for distances. With all
    // extra bits a match of Deflate64 takes sixty.
    struct Case {
        bool deflate64;
        std::size_t lengthCode;
        unsigned lengthBits;
        std::uint32_t shortest;
        std::size_t distanceCode;
        unsigned distanceBits;
        std::size_t nearest[2];
    };

    constexpr Case kCases[] = {{false, 284, 5, 227, 28, 13, {16385, 24577}},
                               {true, 284, 5, 227, 28, 13, {16385, 24577}},
                               {true, 285, 16, 3, 30, 14, {32769, 49153}}};
    support::Random random(15);
    const Bytes noise = support::RandomContent(random, support::Content::kNoise, 65535);
    for (const Case& c : kCases) {
        Bytes litLen(286);
        Bytes distance(32);
        for (std::uint8_t i = 0; i < 14; i++)
            litLen[i] = distance[i] = static_cast<std::uint8_t>(i + 1);
        litLen[256] = litLen[c.lengthCode] = distance[c.distanceCode] = distance[c.distanceCode + 1] = 15;
        DeflateWriter writer;
        writer.Stored(false, noise).Dynamic(true, litLen, distance);
        Bytes expected = noise;
        Bytes beforeLast;
        for (std::uint32_t i = 0; i < 300; i++) {
            const std::uint32_t extra = i % 7 == 0 ? (1u << c.lengthBits) / 4 : i % 32;
            writer.LitLen(i % 14).LitLen(c.lengthCode, extra, c.lengthBits);
            const std::uint32_t farther = (1u << c.distanceBits) - 1 - i * 7; // the last bits are set
            writer.Distance(c.distanceCode + i % 2, farther, c.distanceBits);
            expected.push_back(static_cast<std::uint8_t>(i % 14));
            beforeLast = expected;
            for (std::size_t n = 0; n < c.shortest + extra; n++)
                expected.push_back(expected[expected.size() - c.nearest[i % 2] - farther]);
        }
        // Bytes behind the end, so that the fast loop sees all of it.
        Bytes stream = writer.EndOfBlock().Stream();
        stream.insert(stream.end(), 64, 0xFF);
        ExpectData(RunInflate(stream, expected.size(), c.deflate64), 0, expected);
        ExpectData(RunInflate(stream, expected.size() - 1, c.deflate64), -1, beforeLast);
    }
}

TEST(Inflate, BitsMissingAtTheEndReadAsZeroAndEnd) {
    // Literal 'z' has the code 0, so missing bits are as many of it as fit.
    const Bytes endless = Lengths(257, {{'z', 1}, {256, 1}});
    DeflateWriter literals;
    literals.Dynamic(true, endless, {1, 1});
    ExpectData(RunInflate(literals.Stream(), 5000, false), -1, Bytes(5000, 'z'));

    // The all-zero code of a fixed block is its end, and the block after it, of missing bits, is no stored
    // block.
    DeflateWriter fixed;
    fixed.Fixed(false).Literals(Text("cut"));
    ExpectData(RunInflate(fixed.Stream(), 5000, false), -1, Text("cut"));

    // A match of length 0 as the all-zero code would never end.
    DeflateWriter nothing;
    nothing.Dynamic(true, Lengths(287, {{'a', 2}, {256, 2}, {286, 1}}), {1, 1});
    nothing.LitLen(286); // needs a byte before it, which is not there
    ExpectData(RunInflate(nothing.Stream(), 5000, false), -1, {});
    DeflateWriter loop;
    loop.Dynamic(true, Lengths(287, {{'b', 2}, {256, 2}, {286, 1}}), {1, 1}).LitLen('b');
    // 286 sorts after 'b' but has the shorter code, so it is the all-zero one.
    ExpectData(RunInflate(loop.Stream(), 5000, false), -1, Text("b"));
}

TEST(Inflate, MemoryFollowsTheInputAndNotTheRecord) {
    DeflateWriter endless;
    endless.Dynamic(true, Lengths(257, {{'z', 1}, {256, 1}}), {1, 1});
    fakes::RecordingMessages messages;
    for (const bool deflate64 : kModes) {
        codec::ByteBuffer data = BufferOf(endless.Stream());
        EXPECT_EQ(codec::Inflate(data, 0x7FFFFFFE, deflate64), -1);
        EXPECT_LE(data.Size(), std::size_t{8} << 20);
    }
    // The densest stream there is still decodes whole: two bits for 258 bytes.
    DeflateWriter dense;
    dense.Dynamic(true, Lengths(286, {{'d', 2}, {256, 2}, {285, 1}}), {1, 1}).LitLen('d');
    for (int i = 0; i < 40000; i++)
        dense.LitLen(285).Distance(0);
    dense.EndOfBlock();
    ExpectData(RunInflate(dense.Stream(), 1 + 40000 * 258, false), 0, Bytes(1 + 40000 * 258, 'd'));
    // Of its many pieces the last one stops at the recorded size, too.
    ExpectData(RunInflate(dense.Stream(), 30000 * 258, false), -1, Bytes(1 + 29999 * 258, 'd'));
}
