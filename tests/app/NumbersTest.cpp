#include "base/Numbers.h"

#include "app/Twips.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(Numbers, WholeNumberRoundsHalvesToTheEvenNeighbour) {
    // The seventh has a decimal comma.
    const std::pair<const char*, int> cases[] = {
        {"799.93", 800}, {"2000.12", 2000}, {"2000.5", 2000}, {"2001.5", 2002}, {"-0.5", 0},
        {"-1.5", -2},    {"799,93", 800},   {" +12 ", 12},    {"1E+03", 1000},  {"2147483647.4", 2147483647}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(base::WholeNumber(text), number) << text;
}

TEST(Numbers, WholeNumberRefusesWhatIsNone) {
    for (const char* text : {"", " ", "abc", "12 34", "12px", "1.2.3", "1,234.5", "--1", "+-1", "-+1", ".",
                             "0x10", "inf", "nan", "1e999", "2147483647.5", "-2147483649"})
        EXPECT_EQ(base::WholeNumber(text), std::nullopt) << text;
    EXPECT_EQ(base::WholeNumber(std::string(100'000, '9')), std::nullopt);
}

TEST(Numbers, RoundHalfToEvenStaysInRange) {
    EXPECT_EQ(base::RoundHalfToEven(1e300), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(base::RoundHalfToEven(-1e300), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(base::RoundHalfToEven(std::nan("")), 0);
}

TEST(Numbers, SingleTextIsShortAndReadsBack) {
    const std::pair<float, const char*> cases[] = {
        {120.0F, "120"}, {799.93F, "799.93"}, {12315.0F, "12315"}, {0.1F, "0.1"}, {1234567.8F, "1234568"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(base::SingleText(value), text);
    for (const float value : {0.0F, -15.0F, 3500.4F, 1e7F, 123456789.0F})
        EXPECT_TRUE(base::WholeNumber(base::SingleText(value)).has_value()) << value;
}

TEST(Twips, ConvertBothWaysAndStayInRange) {
    EXPECT_EQ(app::PixelsFromTwips(12315), 821);
    EXPECT_EQ(app::PixelsFromTwips(800), 53);
    EXPECT_EQ(app::PixelsFromTwips(-22), -1);
    for (const int pixels : {-3000, -7, 0, 1, 821, 3000})
        EXPECT_EQ(app::PixelsFromTwips(app::TwipsFromPixels(pixels)), pixels);
    EXPECT_EQ(app::TwipsFromPixels(821), 12315);
    EXPECT_EQ(app::PixelsFromTwips(1e300), std::numeric_limits<int>::max());
    EXPECT_GT(app::TwipsFromPixels(std::numeric_limits<int>::max()), 2'000'000'000);
    EXPECT_LT(app::TwipsFromPixels(std::numeric_limits<int>::min()), -2'000'000'000);
}

} // namespace
