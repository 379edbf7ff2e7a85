#pragma once

#include <cstdint>

namespace platform {

/// A point in time as the number of 100-nanosecond intervals since 1 January 1601, 00:00. Each use says
/// whether it is UTC or local time. 0 is that first moment.
struct FileTime {
    std::uint64_t ticks = 0;
    friend bool operator==(const FileTime&, const FileTime&) = default;
};

/// A calendar date and time of day.
struct SystemTime {
    int year = 1601;
    int month = 1; ///< 1 to 12
    int day = 1;   ///< 1 to 31
    int hour = 0;  ///< 0 to 23
    int minute = 0;
    int second = 0;
    friend bool operator==(const SystemTime&, const SystemTime&) = default;
};

/// Converts the MS-DOS date and time words of an archive entry (local time, two-second steps).
/// Returns false and leaves `time` alone when the words are not a valid date and time.
bool DosDateTimeToFileTime(std::uint16_t date, std::uint16_t time, FileTime& fileTime);

/// Splits a file time into calendar fields, without a time-zone shift.
SystemTime FileTimeToSystemTime(FileTime fileTime);

/// Joins calendar fields, without a time-zone shift; false when they are not a date from 1601 to 30827.
bool SystemTimeToFileTime(const SystemTime& systemTime, FileTime& fileTime);

/// Local time to UTC by the rules in force on that local date.
FileTime LocalFileTimeToFileTime(FileTime local);

/// UTC to local time by the rules in force on that date.
FileTime FileTimeToLocalFileTime(FileTime utc);

/// The present moment, UTC.
FileTime CurrentFileTime();

} // namespace platform
