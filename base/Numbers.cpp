#include "base/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace base {

namespace {

std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Kept apart from from_chars, which would also take "inf", "nan" and no comma.
std::optional<double> DecimalNumber(std::string_view text) {
    text = WithoutBlanks(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    if (text.find_first_not_of("0123456789.,eE+-") != std::string_view::npos)
        return std::nullopt;
    std::string digits(text);
    for (char& character : digits)
        if (character == ',')
            character = '.';
    double value = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

} // namespace

std::int64_t RoundHalfToEven(double value) {
    // The largest double below 2^63; a cast of anything beyond is undefined.
    constexpr double kLimit = 9223372036854774784.0;
    if (std::isnan(value))
        return 0;
    if (value > kLimit)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -kLimit)
        return std::numeric_limits<std::int64_t>::min();
    // The rounding mode of a process is to nearest, halves to even, unless somebody changes it; nobody does.
    return static_cast<std::int64_t>(std::nearbyint(value));
}

std::optional<std::int32_t> WholeNumber(std::string_view text) {
    const std::optional<double> value = DecimalNumber(text);
    if (!value)
        return std::nullopt;
    const std::int64_t whole = RoundHalfToEven(*value);
    if (whole < std::numeric_limits<std::int32_t>::min() || whole > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(whole);
}

std::string SingleText(float value) {
    constexpr int kSignificantDigits = 7;
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::general, kSignificantDigits);
    return {buffer.data(), result.ptr};
}

} // namespace base
