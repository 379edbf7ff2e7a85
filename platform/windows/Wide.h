#pragma once

#include <string>
#include <string_view>

namespace platform {

/// UTF-8 as the system's UTF-16; bytes that are not UTF-8 become U+FFFD.
std::wstring WideOf(std::string_view text);

/// UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string Utf8OfWide(std::wstring_view units);

} // namespace platform
