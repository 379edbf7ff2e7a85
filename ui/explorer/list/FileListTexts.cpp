#include "ui/explorer/list/FileListTexts.h"

#include <array>
#include <cstdio>

namespace ui {

namespace {

constexpr std::uint64_t kKilobyte = 1024;

/// snprintf into a string; what is formatted here is always short.
template <class... Values>
std::string Format(const char* pattern, Values... values) {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), pattern, values...);
    return buffer.data();
}

} // namespace

std::string FileSizeText(std::uint64_t size, bool isFolder) {
    if (isFolder)
        return {};
    if (size == 0)
        return "0 KB";
    if (size < kKilobyte)
        return "1 KB";
    const std::uint64_t halfUp = size % kKilobyte >= kKilobyte / 2 ? 1 : 0;
    return std::to_string(size / kKilobyte + halfUp) + " KB";
}

std::string SizeSortText(std::uint64_t size) {
    return Format("%021llu", static_cast<unsigned long long>(size));
}

PackedTime PackTime(const platform::SystemTime& local) {
    PackedTime packed = 0;
    packed = packed * 100 + static_cast<PackedTime>(local.year);
    packed = packed * 100 + static_cast<PackedTime>(local.month);
    packed = packed * 100 + static_cast<PackedTime>(local.day);
    packed = packed * 100 + static_cast<PackedTime>(local.hour);
    packed = packed * 100 + static_cast<PackedTime>(local.minute);
    packed = packed * 100 + static_cast<PackedTime>(local.second);
    return packed;
}

std::string ModifiedText(PackedTime time) {
    const auto field = [time](PackedTime divisor) { return static_cast<unsigned>(time / divisor % 100); };
    const unsigned second = field(1);
    const unsigned minute = field(100);
    const unsigned hour = field(10'000);
    const unsigned day = field(1'000'000);
    const unsigned month = field(100'000'000);
    const auto year = static_cast<unsigned>(time / 10'000'000'000);
    const unsigned shown = hour % 12 == 0 ? 12 : hour % 12;
    return Format("%02u/%02u/%u %u:%02u:%02u %s", day, month, year, shown, minute, second,
                  hour < 12 ? "AM" : "PM");
}

std::string DateSortText(PackedTime time) {
    return Format("%014llu", static_cast<unsigned long long>(time));
}

std::string NameSortText(const std::string& name, bool isFolder) {
    return (isFolder ? "00" : "11") + name;
}

} // namespace ui
