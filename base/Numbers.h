#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace base {

/// Reads decimal text and rounds it to the nearest whole number; a value exactly halfway goes to the even
/// neighbour ("799.93" is 800, "2000.5" is 2000). Both a decimal point and a decimal comma are accepted.
/// Returns nothing when the text is not a number or does not fit in 32 bits.
std::optional<std::int32_t> WholeNumber(std::string_view text);

/// A value rounded to the nearest whole number, halves to the even neighbour.
std::int64_t RoundHalfToEven(double value);

/// Shortest decimal text of a single-precision number with at most seven significant digits: 120 gives "120",
/// 799.93 gives "799.93".
std::string SingleText(float value);

} // namespace base
