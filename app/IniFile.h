#pragma once

#include <optional>
#include <string>

namespace app {

/// Value of `key` in `section` of the initialisation file `file` as UTF-8, whatever its length, or `fallback`
/// when the file, the section or the key is missing or cannot be read.
std::string ReadIni(const std::string& section, const std::string& key, const std::string& fallback,
                    const std::string& file);

/// Sets `key`, adding the section, the key or the file as needed. A failure (a read-only drive) is silent and
/// leaves the old values. Always true.
bool WriteIni(const std::string& section, const std::string& key, const std::string& value,
              const std::string& file);

/// All bytes of an initialisation file: none when it does not exist, nothing when it exists and cannot be
/// read.
std::optional<std::string> ReadIniContent(const std::string& file);

/// Makes `after` the content of a file whose content is `before`: by one replacement, or not at all when both
/// are equal. A failure is silent and leaves the old content.
void ReplaceIniContent(const std::string& file, const std::string& before, const std::string& after);

} // namespace app
