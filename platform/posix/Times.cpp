#include "platform/Times.h"

#include "HostTimes.h"

#include <algorithm>
#include <limits>

namespace platform {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kEpochSeconds = 11'644'473'600; // 1 January 1601 to 1 January 1970
constexpr std::int64_t kMaxSeconds = std::numeric_limits<std::int64_t>::max() / kTicksPerSecond;

FileTime FromParts(std::int64_t secondsSince1601, std::int64_t ticks) {
    const std::int64_t seconds = std::clamp<std::int64_t>(secondsSince1601, 0, kMaxSeconds - 1);
    if (seconds != secondsSince1601)
        ticks = 0;
    return {static_cast<std::uint64_t>(seconds * kTicksPerSecond + ticks)};
}

} // namespace

FileTime FileTimeFromHost(const timespec& time) {
    // Bounded first, so that the sum cannot overflow.
    const std::int64_t seconds = std::clamp<std::int64_t>(time.tv_sec, -kEpochSeconds - 1, kMaxSeconds);
    return FromParts(seconds + kEpochSeconds, time.tv_nsec / 100);
}

timespec HostTimeOf(FileTime time) {
    const std::uint64_t perSecond = kTicksPerSecond;
    timespec host{};
    host.tv_sec = static_cast<time_t>(static_cast<std::int64_t>(time.ticks / perSecond) - kEpochSeconds);
    host.tv_nsec = static_cast<long>(time.ticks % perSecond) * 100;
    return host;
}

FileTime LocalFileTimeToFileTime(FileTime local) {
    const SystemTime fields = FileTimeToSystemTime(local);
    std::tm parts{};
    parts.tm_year = fields.year - 1900;
    parts.tm_mon = fields.month - 1;
    parts.tm_mday = fields.day;
    parts.tm_hour = fields.hour;
    parts.tm_min = fields.minute;
    parts.tm_sec = fields.second;
    parts.tm_isdst = -1; // whichever is in force on that date
    const std::int64_t seconds = std::mktime(&parts);
    return FromParts(seconds + kEpochSeconds, static_cast<std::int64_t>(local.ticks % kTicksPerSecond));
}

FileTime FileTimeToLocalFileTime(FileTime utc) {
    const time_t seconds = HostTimeOf(utc).tv_sec;
    std::tm parts{};
    if (localtime_r(&seconds, &parts) == nullptr)
        return utc;
    return FromParts(seconds + kEpochSeconds + parts.tm_gmtoff,
                     static_cast<std::int64_t>(utc.ticks % kTicksPerSecond));
}

FileTime CurrentFileTime() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return FileTimeFromHost(now);
}

} // namespace platform
