#include "base/OutputPathRule.h"

#include <algorithm>
#include <array>

namespace base {

namespace {

// The longest name that is accepted: what is written must be reachable by its path below the target folder,
// to be opened or deleted later.
constexpr std::size_t kLongestName = 3072;

constexpr std::array<std::string_view, 6> kDevices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

char UpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualsAsciiNoCase(std::string_view text, std::string_view upper) {
    return std::ranges::equal(text, upper, {}, UpperAscii);
}

/// COM and LPT with one digit; the superscript digits of Latin-1 count as digits there.
bool IsNumberedDevice(std::string_view base) {
    if (base.size() < 4 ||
        (!EqualsAsciiNoCase(base.substr(0, 3), "COM") && !EqualsAsciiNoCase(base.substr(0, 3), "LPT")))
        return false;
    const std::string_view digit = base.substr(3);
    return (digit.size() == 1 && digit[0] >= '1' && digit[0] <= '9') || digit == "\u00B9" ||
           digit == "\u00B2" || digit == "\u00B3";
}

bool IsDeviceName(std::string_view part) {
    std::string_view base = part.substr(0, part.find('.'));
    while (base.ends_with(' '))
        base.remove_suffix(1);
    return IsNumberedDevice(base) ||
           std::ranges::any_of(kDevices, [&](auto device) { return EqualsAsciiNoCase(base, device); });
}

bool IsGoodPart(std::string_view part, bool isLast) {
    if (part == ".")
        return !isLast;
    return !part.empty() && !part.ends_with('.') && !part.ends_with(' ') && !IsDeviceName(part);
}

} // namespace

bool StaysInTarget(std::string_view name) {
    if (name.empty() || name.size() > kLongestName ||
        std::ranges::any_of(name, [](char c) { return c == ':' || IsControl(c); }))
        return false;
    for (;;) {
        const std::size_t end = name.find_first_of("/\\");
        if (!IsGoodPart(name.substr(0, end), end == name.npos))
            return false;
        if (end == name.npos || end + 1 == name.size())
            return true;
        name.remove_prefix(end + 1);
    }
}

} // namespace base
