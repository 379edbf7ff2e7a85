#include "app/core/Numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(Numbers, WholeNumberRoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(app::WholeNumber("799.93"), 800);
    EXPECT_EQ(app::WholeNumber("2000.12"), 2000);
    EXPECT_EQ(app::WholeNumber("2000.5"), 2000);
    EXPECT_EQ(app::WholeNumber("2001.5"), 2002);
    EXPECT_EQ(app::WholeNumber("-0.5"), 0);
    EXPECT_EQ(app::WholeNumber("-1.5"), -2);
    EXPECT_EQ(app::WholeNumber("799,93"), 800) << "decimal comma";
    EXPECT_EQ(app::WholeNumber(" +12 "), 12);
    EXPECT_EQ(app::WholeNumber("1E+03"), 1000);
    EXPECT_EQ(app::WholeNumber("2147483647.4"), 2147483647);
}

TEST(Numbers, WholeNumberRefusesWhatIsNone) {
    for (const char* text : {"", " ", "abc", "12 34", "12px", "1.2.3", "1,234.5", "--1", "+-1", "-+1", ".",
                             "0x10", "inf", "nan", "1e999", "2147483647.5", "-2147483649"})
        EXPECT_EQ(app::WholeNumber(text), std::nullopt) << text;
    EXPECT_EQ(app::WholeNumber(std::string(100'000, '9')), std::nullopt);
}

TEST(Numbers, RoundHalfToEvenStaysInRange) {
    EXPECT_EQ(app::RoundHalfToEven(1e300), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(app::RoundHalfToEven(-1e300), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(app::RoundHalfToEven(std::nan("")), 0);
}

TEST(Numbers, SingleTextIsShortAndReadsBack) {
    EXPECT_EQ(app::SingleText(120.0F), "120");
    EXPECT_EQ(app::SingleText(799.93F), "799.93");
    EXPECT_EQ(app::SingleText(12315.0F), "12315");
    EXPECT_EQ(app::SingleText(0.1F), "0.1");
    EXPECT_EQ(app::SingleText(1234567.8F), "1234568");
    for (const float value : {0.0F, -15.0F, 3500.4F, 1e7F, 123456789.0F})
        EXPECT_TRUE(app::WholeNumber(app::SingleText(value)).has_value()) << value;
}

} // namespace
