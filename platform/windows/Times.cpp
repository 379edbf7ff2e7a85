#include "platform/Times.h"

#include "Handle.h"

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

/// Converts by the rules in force at that moment. What is below a second is carried over.
FileTime Converted(FileTime time, BOOL(WINAPI* convert)(const DYNAMIC_TIME_ZONE_INFORMATION*,
                                                        const SYSTEMTIME*, SYSTEMTIME*)) {
    constexpr std::uint64_t kTicksPerSecond = 10'000'000;
    const SYSTEMTIME before = HostFieldsOf(FileTimeToSystemTime(time));
    SYSTEMTIME after{};
    FileTime result;
    if (convert(nullptr, &before, &after) == 0 || !SystemTimeToFileTime(FieldsOf(after), result))
        return time;
    result.ticks += time.ticks % kTicksPerSecond;
    return result;
}

} // namespace

FileTime LocalFileTimeToFileTime(FileTime local) {
    return Converted(local, ::TzSpecificLocalTimeToSystemTimeEx);
}

FileTime FileTimeToLocalFileTime(FileTime utc) {
    return Converted(utc, ::SystemTimeToTzSpecificLocalTimeEx);
}

FileTime CurrentFileTime() {
    FILETIME now{};
    ::GetSystemTimePreciseAsFileTime(&now);
    return FileTimeFromHost(now);
}

} // namespace platform
