#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Bytes of a code page with one byte for every character, as UTF-8; see LegacyToUtf8.
std::string ReadSingleByte(int codePage, std::string_view bytes);

/// UTF-8 text as bytes of such a code page; see Utf8ToLegacy.
std::string WriteSingleByte(int codePage, std::string_view text);

} // namespace platform
