#include "archive/codec/ByteBuffer.h"

#include <cstring>
#include <gtest/gtest.h>
#include <utility>

using codec::ByteBuffer;

TEST(ByteBuffer, KeepsItsBytesWhileItGrowsShrinksAndLosesItsFront) {
    ByteBuffer buffer(3);
    std::memcpy(buffer.Data(), "abc", 3);
    buffer.Resize(1 << 20);
    buffer.Resize(3);
    EXPECT_EQ(std::memcmp(buffer.Data(), "abc", 3), 0);
    buffer.DropFront(1);
    ASSERT_EQ(buffer.Size(), 2u);
    EXPECT_EQ(std::memcmp(buffer.Data(), "bc", 2), 0);
    buffer.DropFront(9);
    EXPECT_EQ(buffer.Size(), 0u);
}

TEST(ByteBuffer, MovedFromBufferIsEmptyAndUsable) {
    ByteBuffer from(10);
    from[9] = 7;
    ByteBuffer to = std::move(from);
    EXPECT_EQ(to[9], 7);
    EXPECT_EQ(from.Size(), 0u); // NOLINT(bugprone-use-after-move): that is the point
    from.Resize(5);
    std::memset(from.Data(), 1, 5);
    to = std::move(from);
    EXPECT_EQ(to.Size(), 5u);
}

TEST(ByteBuffer, ReuseScopeHandsTheLargestFreedBlockOnUntilItsEnd) {
    // Blocks of this size come from the operating system filled with zeros and go back to it at once, so a
    // byte that is still there shows that the block was kept.
    constexpr std::size_t kLarge = std::size_t{40} << 20;
    constexpr std::size_t kMiddle = kLarge / 2;
    {
        const ByteBuffer::ReuseScope scope;
        ByteBuffer large(kLarge);
        large[kMiddle] = 7;
        large.Clear();
        EXPECT_EQ(ByteBuffer(kMiddle + 1)[kMiddle], 7);
        const ByteBuffer again(kLarge);
        EXPECT_EQ(again[kMiddle], 7);
        ByteBuffer other(kLarge);
        EXPECT_NE(other.Data(), again.Data()) << "the block is taken";
        EXPECT_EQ(other[kMiddle], 0);
        other[kMiddle] = 7; // the first to be given up now
    }
    EXPECT_EQ(ByteBuffer(kLarge)[kMiddle], 0);
}
