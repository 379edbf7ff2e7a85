#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace base {

// The content of an initialisation file as text: sections in square brackets, `key=value` lines, comments
// from a semicolon on. Lines end in CR LF or LF. Of several sections or keys of one name the first counts.
// Names are UTF-8 and are matched without regard to case. Values are bytes of any encoding: what the text
// holds besides a value that is set stays as it is, whatever its encoding.

/// The value of a key without the blanks around it and without one pair of quotation marks that enclose it;
/// nothing when the section or the key is missing. A view into `content`.
std::optional<std::string_view> FindProfileValue(std::string_view content, std::string_view section,
                                                 std::string_view key);

/// `content` with the value of a key replaced; a missing key is added at the end of its section, a missing
/// section at the end of the text. Every other byte stays. A line end or NUL in `value` ends it.
std::string SetProfileValue(std::string_view content, std::string_view section, std::string_view key,
                            std::string_view value);

} // namespace base
