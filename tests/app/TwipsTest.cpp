#include "app/core/Twips.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(Twips, ConvertBothWays) {
    EXPECT_EQ(app::PixelsFromTwips(12315), 821);
    EXPECT_EQ(app::PixelsFromTwips(800), 53);
    EXPECT_EQ(app::PixelsFromTwips(-22), -1);
    EXPECT_EQ(app::TwipsFromPixels(821), 12315);
    for (int pixels = -3000; pixels <= 3000; pixels += 7)
        EXPECT_EQ(app::PixelsFromTwips(app::TwipsFromPixels(pixels)), pixels);
}

TEST(Twips, StayInRange) {
    EXPECT_EQ(app::PixelsFromTwips(1e300), std::numeric_limits<int>::max());
    EXPECT_GT(app::TwipsFromPixels(std::numeric_limits<int>::max()), 2'000'000'000);
    EXPECT_LT(app::TwipsFromPixels(std::numeric_limits<int>::min()), -2'000'000'000);
}

} // namespace
