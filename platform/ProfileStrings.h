#pragma once

#include "base/SystemError.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Reads one value of an initialisation file (sections in square brackets, `key=value` lines, ANSI text).
/// Section and key are matched without regard to case; blanks around the value and one pair of quotation
/// marks that enclose it are dropped. The value, or `fallback` when file, section or key is missing, is put
/// into `buffer` as UTF-8 with a NUL behind it. Returns the bytes stored without the NUL; a value that does
/// not fit is cut and buffer.size() - 1 returned.
std::size_t GetProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                             std::span<char> buffer, const std::string& file);

/// Sets one value, adding the section, the key or the file as needed. Everything else in the file, comments
/// and order included, is kept byte for byte. The file is replaced only once the new one is complete.
base::SystemError WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                                     const std::string& file);

} // namespace platform
