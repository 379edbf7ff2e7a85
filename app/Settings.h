#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace app {

/// The settings file's values. What stands here are the defaults of keys that an existing file lacks; those
/// of a new file are others. Lengths are whole twips; a value that is not a number reads as nothing.
struct Settings {
    static constexpr std::size_t kColumns = 4;

    std::string language;                   ///< four hexadecimal digits such as "0409"
    std::string charset = "0";              ///< font character-set number, decimal
    std::optional<int> height = 8040;       ///< the main window's outer height
    std::optional<int> width = 8955;        ///< the main window's outer width
    std::optional<int> splitterLeft = 3500; ///< left edge of the splitter between the panes
    /// The file list's visible columns.
    std::array<std::optional<int>, kColumns> columnWidths = {1800, 800, 1440, 2000};
    std::string skinFile; ///< relative to the program folder; empty: no skin

    bool operator==(const Settings&) const = default;
};

/// Full path of the settings file in the program folder.
std::string SettingsFilePath();

/// Writes the default settings file when there is none. True when there is one at the end.
bool EnsureSettingsFile();

/// All settings, by one reading of the file. A file that cannot be read gives the defaults.
Settings ReadSettings();

/// Writes the lengths that differ from the file's, by one replacement of the file; everything else in it
/// stays byte for byte. When none differs, the file is not touched. Language, character set and skin are the
/// user's alone and never written. A failure (a read-only drive) is silent and leaves the old values.
void SaveSettings(const Settings& settings);

/// `[Setting] Language`, empty when missing.
std::string ReadLanguageId();

/// `[Setting] Charset`, "0" when missing.
std::string ReadCharset();

} // namespace app
