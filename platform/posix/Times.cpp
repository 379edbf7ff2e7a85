#include "platform/Times.h"

#include "platform/posix/files/HostTimes.h"

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

/// How far local time is ahead of UTC at a moment; 0 where the host cannot say.
std::int64_t SecondsEastAt(time_t utc) {
    std::tm parts{};
    return localtime_r(&utc, &parts) == nullptr ? 0 : parts.tm_gmtoff;
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
    // Not mktime: it looks for a changed zone file at every call, which an extraction makes for every file.
    const std::int64_t seconds = HostTimeOf(local).tv_sec;
    const std::int64_t guess = seconds - SecondsEastAt(seconds);
    std::int64_t utc = seconds - SecondsEastAt(guess);
    if (SecondsEastAt(utc) != seconds - utc)
        utc = guess; // an hour that the zone leaves out
    return FromParts(utc + kEpochSeconds, static_cast<std::int64_t>(local.ticks % kTicksPerSecond));
}

FileTime FileTimeToLocalFileTime(FileTime utc) {
    const std::int64_t seconds = HostTimeOf(utc).tv_sec;
    return FromParts(seconds + kEpochSeconds + SecondsEastAt(seconds),
                     static_cast<std::int64_t>(utc.ticks % kTicksPerSecond));
}

FileTime CurrentFileTime() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return FileTimeFromHost(now);
}

} // namespace platform
