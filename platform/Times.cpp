#include "platform/Times.h"

namespace platform {
namespace {

constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr std::uint64_t kSecondsPerDay = 86'400;
constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827;

bool IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

/// Days from 1 January 1601 to 1 January of `year`.
std::uint64_t DaysBeforeYear(int year) {
    const int years = year - kFirstYear;
    // 1601 opens a 400-year cycle, so that the leap years passed are simply counted.
    return static_cast<std::uint64_t>(years) * 365 +
           static_cast<std::uint64_t>(years / 4 - years / 100 + years / 400);
}

} // namespace

bool DosDateTimeToFileTime(std::uint16_t date, std::uint16_t time, FileTime& fileTime) {
    // Date: years since 1980 (7 bits), month (4), day (5). Time: hour (5), minute (6), second / 2 (5).
    SystemTime fields;
    fields.year = 1980 + (date >> 9);
    fields.month = (date >> 5) & 0x0F;
    fields.day = date & 0x1F;
    fields.hour = time >> 11;
    fields.minute = (time >> 5) & 0x3F;
    fields.second = (time & 0x1F) * 2;
    return SystemTimeToFileTime(fields, fileTime);
}

SystemTime FileTimeToSystemTime(FileTime fileTime) {
    const std::uint64_t seconds = fileTime.ticks / kTicksPerSecond;
    std::uint64_t day = seconds / kSecondsPerDay;
    const int ofDay = static_cast<int>(seconds % kSecondsPerDay);
    // 400 years have 146,097 days: the estimate is at most one year too low or too high.
    SystemTime fields;
    fields.year = kFirstYear + static_cast<int>(day * 400 / 146'097);
    while (DaysBeforeYear(fields.year) > day)
        --fields.year;
    while (DaysBeforeYear(fields.year + 1) <= day)
        ++fields.year;
    day -= DaysBeforeYear(fields.year);
    fields.month = 1;
    while (day >= static_cast<std::uint64_t>(DaysInMonth(fields.year, fields.month))) {
        day -= static_cast<std::uint64_t>(DaysInMonth(fields.year, fields.month));
        ++fields.month;
    }
    fields.day = static_cast<int>(day) + 1;
    fields.hour = ofDay / 3600;
    fields.minute = ofDay / 60 % 60;
    fields.second = ofDay % 60;
    return fields;
}

bool SystemTimeToFileTime(const SystemTime& systemTime, FileTime& fileTime) {
    const SystemTime& t = systemTime;
    if (t.year < kFirstYear || t.year > kLastYear || t.month < 1 || t.month > 12 || t.day < 1 ||
        t.day > DaysInMonth(t.year, t.month) || t.hour < 0 || t.hour > 23 || t.minute < 0 || t.minute > 59 ||
        t.second < 0 || t.second > 59)
        return false;
    std::uint64_t days = DaysBeforeYear(t.year) + static_cast<std::uint64_t>(t.day - 1);
    for (int month = 1; month < t.month; ++month)
        days += static_cast<std::uint64_t>(DaysInMonth(t.year, month));
    const int ofDay = t.hour * 3600 + t.minute * 60 + t.second;
    fileTime.ticks = (days * kSecondsPerDay + static_cast<std::uint64_t>(ofDay)) * kTicksPerSecond;
    return true;
}

} // namespace platform
