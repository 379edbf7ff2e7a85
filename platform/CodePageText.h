#pragma once

#include <string>
#include <string_view>

namespace platform {

inline constexpr int kUtf8CodePage = 65001;

/// Bytes of a legacy code page as UTF-8; bytes without a meaning become "?". A page that the system does not
/// know is read as 1252.
std::string LegacyToUtf8(int codePage, std::string_view bytes);

/// UTF-8 text as bytes of a legacy code page; what the page lacks, and bytes that are not UTF-8, become "?".
std::string Utf8ToLegacy(int codePage, std::string_view text);

} // namespace platform
