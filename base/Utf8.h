#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// Returned for a byte that is not part of a UTF-8 sequence; no code point has this value.
inline constexpr char32_t kNotUtf8 = 0xFFFFFFFF;

/// Length of the run of bytes below 0x80 at the start of `text`.
std::size_t AsciiPrefix(std::string_view text);

/// Reads the code point at `position`, which is less than text.size(), and moves `position` behind it. Where
/// no well-formed sequence begins (Unicode, table 3-7), returns kNotUtf8 and moves on by one byte.
char32_t NextCodePoint(std::string_view text, std::size_t& position);

/// Appends one code point (not a surrogate, at most U+10FFFF).
void AppendUtf8(std::string& text, char32_t codePoint);

/// UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view units);

/// Whether all of `text` is well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// `text` with "?" for every byte that is not part of a well-formed sequence.
std::string CleanedUtf8(std::string_view text);

} // namespace base
