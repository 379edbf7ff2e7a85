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

TEST(ByteBuffer, ReuseScopeHandsTheLargestFreedBlockOn) {
    constexpr std::size_t kLarge = std::size_t{8} << 20;
    const ByteBuffer::ReuseScope scope;
    ByteBuffer large(kLarge);
    const std::uint8_t* const block = large.Data();
    large.Clear();
    EXPECT_EQ(large.Size(), 0u);
    {
        const ByteBuffer smaller(kLarge / 2 + 1);
        EXPECT_EQ(smaller.Data(), block);
    }
    const ByteBuffer again(kLarge);
    EXPECT_EQ(again.Data(), block);
    // Taken: the next one gets memory of its own.
    ByteBuffer other(kLarge);
    EXPECT_NE(other.Data(), block);
    std::memset(other.Data(), 1, kLarge);
}
