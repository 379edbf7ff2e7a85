#include "platform/Times.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <ratio>

namespace platform {
namespace {

namespace chrono = std::chrono;

using Ticks = chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827; // the last one of which every moment has a number of ticks
constexpr chrono::sys_days kFirstDay = chrono::year(kFirstYear) / chrono::January / 1;

constexpr bool IsWithin(int value, int least, int most) {
    return value >= least && value <= most;
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
    constexpr std::uint64_t kMost = std::numeric_limits<Ticks::rep>::max();
    const Ticks ticks(static_cast<Ticks::rep>(std::min(fileTime.ticks, kMost)));
    const auto days = chrono::floor<chrono::days>(ticks);
    const chrono::year_month_day date(kFirstDay + days);
    const chrono::hh_mm_ss time(chrono::floor<chrono::seconds>(ticks - days));
    SystemTime fields;
    fields.year = static_cast<int>(date.year());
    fields.month = static_cast<int>(static_cast<unsigned>(date.month()));
    fields.day = static_cast<int>(static_cast<unsigned>(date.day()));
    fields.hour = static_cast<int>(time.hours().count());
    fields.minute = static_cast<int>(time.minutes().count());
    fields.second = static_cast<int>(time.seconds().count());
    return fields;
}

bool SystemTimeToFileTime(const SystemTime& systemTime, FileTime& fileTime) {
    const SystemTime& t = systemTime;
    // A month or day outside these bounds would be another one in the calendar's small types.
    if (!IsWithin(t.year, kFirstYear, kLastYear) || !IsWithin(t.month, 1, 12) || !IsWithin(t.day, 1, 31) ||
        !IsWithin(t.hour, 0, 23) || !IsWithin(t.minute, 0, 59) || !IsWithin(t.second, 0, 59))
        return false;
    const chrono::year_month_day date(chrono::year(t.year), chrono::month(static_cast<unsigned>(t.month)),
                                      chrono::day(static_cast<unsigned>(t.day)));
    if (!date.ok())
        return false;
    const Ticks ticks = chrono::sys_days(date) - kFirstDay + chrono::hours(t.hour) +
                        chrono::minutes(t.minute) + chrono::seconds(t.second);
    fileTime.ticks = static_cast<std::uint64_t>(ticks.count());
    return true;
}

} // namespace platform
