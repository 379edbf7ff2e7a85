#pragma once

#include <Qt>
#include <QtGlobal>

#include <string_view>

class QPalette;

namespace ui {

/// Gives the program its look: the widget style, and a dark palette when PELLARION_PALETTE is "dark" (a
/// desktop that hands Qt a palette of its own needs nothing of this).
void SetUpAppearance();

/// Whether a palette is dark: its text is lighter than what it stands on.
bool IsDark(const QPalette& palette);

/// Which way windows run in a language, by the primary part of its id: right to left for Arabic, Hebrew,
/// Persian and Urdu.
Qt::LayoutDirection DirectionOf(std::string_view languageId);

} // namespace ui
