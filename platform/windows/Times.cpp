#include "platform/Times.h"

#include "platform/windows/files/Handle.h"

namespace platform {
namespace {

SYSTEMTIME HostFieldsOf(const SystemTime& time) {
    SYSTEMTIME fields{};
    fields.wYear = static_cast<WORD>(time.year);
    fields.wMonth = static_cast<WORD>(time.month);
    fields.wDay = static_cast<WORD>(time.day);
    fields.wHour = static_cast<WORD>(time.hour);
    fields.wMinute = static_cast<WORD>(time.minute);
    fields.wSecond = static_cast<WORD>(time.second);
    return fields;
}

SystemTime FieldsOf(const SYSTEMTIME& fields) {
    return {fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond};
}

using Conversion = BOOL(WINAPI*)(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, SYSTEMTIME*);

/// Converts by the rules in force in that year. What is below a second is carried over.
FileTime Converted(FileTime time, Conversion convert) {
    constexpr std::uint64_t kTicksPerSecond = 10'000'000;
    const SYSTEMTIME before = HostFieldsOf(FileTimeToSystemTime(time));
    SYSTEMTIME after{};
    TIME_ZONE_INFORMATION zone{};
    FileTime result;
    if (::GetTimeZoneInformationForYear(before.wYear, nullptr, &zone) == 0 ||
        convert(&zone, &before, &after) == 0 || !SystemTimeToFileTime(FieldsOf(after), result))
        return time;
    result.ticks += time.ticks % kTicksPerSecond;
    return result;
}

BOOL WINAPI ToUtc(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* local, SYSTEMTIME* utc) {
    return ::TzSpecificLocalTimeToSystemTime(zone, local, utc);
}

BOOL WINAPI ToLocal(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc, SYSTEMTIME* local) {
    return ::SystemTimeToTzSpecificLocalTime(zone, utc, local);
}

} // namespace

FileTime LocalFileTimeToFileTime(FileTime local) {
    return Converted(local, ToUtc);
}

FileTime FileTimeToLocalFileTime(FileTime utc) {
    return Converted(utc, ToLocal);
}

FileTime CurrentFileTime() {
    FILETIME now{};
    ::GetSystemTimePreciseAsFileTime(&now);
    return FileTimeFromHost(now);
}

} // namespace platform
