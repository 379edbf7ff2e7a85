#pragma once

#include <optional>

namespace ui {

inline constexpr int kSavedColumns = 4;

// Lengths of the main window in the settings file, in twips. A value that is not a number reads as nothing.

std::optional<int> SavedHeight();
std::optional<int> SavedWidth();
std::optional<int> SavedSplitterLeft();
std::optional<int> SavedColumnWidth(int column);

void SaveHeight(int twips);
void SaveWidth(int twips);
void SaveSplitterLeft(int twips);
void SaveColumnWidth(int column, int twips);

} // namespace ui
