#pragma once

#include <QFont>
#include <QFontDatabase>

#include <optional>
#include <string_view>

class QWidget;

namespace ui {

/// Font size of labels in points: 9 for the language ids "0804" and "0404", else 8.
int LabelPointSize(std::string_view languageId);

/// The script that a font character-set number stands for; nothing for the Western set and unknown numbers.
std::optional<QFontDatabase::WritingSystem> ScriptOfCharset(std::string_view charsetCode);

/// `font`, with a family added that has the letters of the character set when its own family lacks them.
QFont WithCharset(const QFont& font, std::string_view charsetCode);

/// The last step of every window's apply-texts routine: gives its labels the label size, and its labels,
/// trees, lists and text controls the character set. A label whose property "keepsFontSize" is true keeps its
/// size.
void ApplyFonts(QWidget* window);

} // namespace ui
