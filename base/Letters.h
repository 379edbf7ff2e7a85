#pragma once

#include <string>
#include <string_view>

namespace base {

/// UTF-8 text with every letter in upper case, as file names are compared. One code point becomes one code
/// point ("ß" does not become "SS"). Bytes that are not UTF-8 are kept.
std::string ToUpper(std::string_view text);

/// The same in lower case.
std::string ToLower(std::string_view text);

/// Compares two UTF-8 texts without regard to letter case. Returns a negative number, 0 or a positive number.
int CompareNoCase(std::string_view left, std::string_view right);

bool EqualsNoCase(std::string_view left, std::string_view right);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
bool EndsWithNoCase(std::string_view text, std::string_view suffix);

/// `text` with every occurrence of `what` (not empty), in any letter case, replaced by `with`.
std::string ReplaceNoCase(std::string_view text, std::string_view what, std::string_view with);

} // namespace base
