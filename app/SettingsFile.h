#pragma once

#include <string>

namespace app {

/// Value of `key` in `section` of `file`, whatever its length, or `fallback` when there is none.
std::string ReadIni(const std::string& section, const std::string& key, const std::string& fallback,
                    const std::string& file);

/// Sets `key`; a failure (a read-only drive) is silent and leaves the old values. Always true.
bool WriteIni(const std::string& section, const std::string& key, const std::string& value,
              const std::string& file);

/// Full path of the settings file in the program folder.
std::string SettingsFilePath();

/// Writes the default settings file when there is none. True when there is one at the end.
bool EnsureSettingsFile();

/// `[Setting] Language`, empty when missing.
std::string ReadLanguageId();

/// `[Setting] Charset`, "0" when missing.
std::string ReadCharset();

} // namespace app
