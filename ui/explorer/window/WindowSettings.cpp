#include "ui/explorer/window/WindowSettings.h"

#include "app/SettingsFile.h"
#include "base/Numbers.h"

#include <array>
#include <string>

namespace ui {

namespace {

constexpr std::array<const char*, kSavedColumns> kDefaultColumnWidths = {"1800.00", "799.93", "1440.00",
                                                                         "2000.12"};

std::optional<int> Read(const std::string& section, const std::string& key, const std::string& fallback) {
    return base::WholeNumber(app::ReadIni(section, key, fallback, app::SettingsFilePath()));
}

void Write(const std::string& section, const std::string& key, int twips) {
    app::WriteIni(section, key, base::SingleText(static_cast<float>(twips)), app::SettingsFilePath());
}

std::string ColumnKey(int column) {
    return "ColWidth" + std::to_string(column);
}

} // namespace

std::optional<int> SavedHeight() {
    return Read("Size", "Height", "8040");
}

std::optional<int> SavedWidth() {
    return Read("Size", "Width", "8955");
}

std::optional<int> SavedSplitterLeft() {
    return Read("VSplitter", "Left", "3500");
}

std::optional<int> SavedColumnWidth(int column) {
    return Read("Grid", ColumnKey(column), kDefaultColumnWidths[static_cast<std::size_t>(column)]);
}

void SaveHeight(int twips) {
    Write("Size", "Height", twips);
}

void SaveWidth(int twips) {
    Write("Size", "Width", twips);
}

void SaveSplitterLeft(int twips) {
    Write("VSplitter", "Left", twips);
}

void SaveColumnWidth(int column, int twips) {
    Write("Grid", ColumnKey(column), twips);
}

} // namespace ui
