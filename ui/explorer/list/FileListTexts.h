#pragma once

#include "platform/Times.h"

#include <cstdint>
#include <string>

namespace ui {

/// Text of the size column: empty for a folder, "0 KB" for an empty file, else whole kilobytes, rounded with
/// halves up and never below 1, without separators ("1536 bytes" gives "2 KB").
std::string FileSizeText(std::uint64_t size, bool isFolder);

/// Size sort key: the size in 21 digits with leading zeros.
std::string SizeSortText(std::uint64_t size);

/// A local date and time as one number whose decimal digits are "yyyymmddhhmmss"; it orders and packs what
/// the date columns show.
using PackedTime = std::uint64_t;

PackedTime PackTime(const platform::SystemTime& local);

/// Text of the date column: "dd/mm/yyyy h:mm:ss AM" or "PM", the hour on the twelve-hour clock.
std::string ModifiedText(PackedTime time);

/// Date sort key: the fourteen digits.
std::string DateSortText(PackedTime time);

/// Name sort key: "00" and the name for a folder, "11" and the name for a file.
std::string NameSortText(const std::string& name, bool isFolder);

} // namespace ui
