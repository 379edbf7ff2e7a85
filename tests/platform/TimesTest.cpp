#include "platform/Times.h"

#include "support/HostFiles.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

using namespace platform;

constexpr std::uint64_t kSecond = 10'000'000;

FileTime Joined(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    FileTime time;
    EXPECT_TRUE(SystemTimeToFileTime({year, month, day, hour, minute, second}, time));
    return time;
}

constexpr std::uint16_t DosDate(int year, int month, int day) {
    return static_cast<std::uint16_t>((year - 1980) << 9 | month << 5 | day);
}

constexpr std::uint16_t DosTime(int hour, int minute, int halfSeconds) {
    return static_cast<std::uint16_t>(hour << 11 | minute << 5 | halfSeconds);
}

TEST(Times, DosDateAndTime) {
    FileTime time;
    ASSERT_TRUE(DosDateTimeToFileTime(DosDate(2005, 3, 4), DosTime(10, 20, 15), time));
    EXPECT_EQ(FileTimeToSystemTime(time), (SystemTime{2005, 3, 4, 10, 20, 30}));
    ASSERT_TRUE(DosDateTimeToFileTime(DosDate(2000, 2, 29), DosTime(23, 59, 29), time));
    EXPECT_EQ(FileTimeToSystemTime(time), (SystemTime{2000, 2, 29, 23, 59, 58}));
    EXPECT_TRUE(DosDateTimeToFileTime(DosDate(2107, 12, 31), 0, time));
}

TEST(Times, DosWordsThatAreNoDate) {
    const std::pair<std::uint16_t, std::uint16_t> cases[] = {{0, 0},
                                                             {DosDate(2001, 2, 29), 0},
                                                             {DosDate(2100, 2, 29), 0},
                                                             {DosDate(2001, 13, 1), 0},
                                                             {DosDate(2001, 1, 0), 0},
                                                             {DosDate(2001, 1, 1), DosTime(24, 0, 0)},
                                                             {DosDate(2001, 1, 1), DosTime(0, 60, 0)},
                                                             {DosDate(2001, 1, 1), DosTime(0, 0, 30)}};
    for (const auto& one : cases) {
        FileTime time{77};
        EXPECT_FALSE(DosDateTimeToFileTime(one.first, one.second, time)) << "case " << &one - cases;
        EXPECT_EQ(time.ticks, 77U) << "left alone";
    }
}

TEST(Times, CalendarAgreesWithTheStandardLibrarys) {
    // Every 1,009 days over 1,500 years, at an odd time of day.
    using namespace std::chrono;
    for (std::int64_t day = 0; day < 550'000; day += 1009) {
        const FileTime time{(static_cast<std::uint64_t>(day) * 86'400 + 12'345) * kSecond + 9'999'999};
        const SystemTime fields = FileTimeToSystemTime(time);
        const year_month_day date{year(fields.year), month(static_cast<unsigned>(fields.month)),
                                  std::chrono::day(static_cast<unsigned>(fields.day))};
        ASSERT_EQ((sys_days(date) - sys_days(1601y / 1 / 1)).count(), day);
        ASSERT_EQ(fields.hour * 3600 + fields.minute * 60 + fields.second, 12'345);
        FileTime back;
        ASSERT_TRUE(SystemTimeToFileTime(fields, back));
        ASSERT_EQ(back.ticks, time.ticks - 9'999'999);
    }
}

TEST(Times, EndsOfTheCalendar) {
    EXPECT_EQ(Joined(1601, 1, 1).ticks, 0U);
    EXPECT_EQ(FileTimeToSystemTime({0}), SystemTime{});
    EXPECT_EQ(FileTimeToSystemTime({0x7FFF'FFFF'FFFF'FFFF}), (SystemTime{30828, 9, 14, 2, 48, 5}));
    const SystemTime none[] = {{1600, 12, 31, 0, 0, 0},
                               {30828, 1, 1, 0, 0, 0},
                               {2020, 4, 31, 0, 0, 0},
                               {2020, 4, 30, 0, 0, 60},
                               {2020, 4, 30, -1, 0, 0}};
    FileTime time;
    for (const SystemTime& fields : none)
        EXPECT_FALSE(SystemTimeToFileTime(fields, time)) << "case " << &fields - none;
}

TEST(Times, ZoneOfTheDateItself) {
    const tests::TimeZone zone;
    if (!zone.IsSet())
        GTEST_SKIP() << "another zone";
    EXPECT_EQ(LocalFileTimeToFileTime(Joined(2005, 1, 4, 10, 20, 30)), Joined(2005, 1, 4, 9, 20, 30));
    EXPECT_EQ(LocalFileTimeToFileTime(Joined(2005, 7, 4, 10, 20, 30)), Joined(2005, 7, 4, 8, 20, 30));
    EXPECT_EQ(FileTimeToLocalFileTime(Joined(2005, 7, 4, 8, 20, 30)), Joined(2005, 7, 4, 10, 20, 30));
    const FileTime fraction{Joined(2005, 1, 4).ticks + 1'234'567};
    EXPECT_EQ(FileTimeToLocalFileTime(LocalFileTimeToFileTime(fraction)), fraction);
    EXPECT_EQ(LocalFileTimeToFileTime({0}).ticks, 0U) << "not before the first moment";
}

} // namespace
