#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

class QAbstractButton;

namespace ui {

/// Text of the layers below the windows as a window shows it, and back.
QString ToWindow(std::string_view text);
std::string FromWindow(const QString& text);

/// A text of the language library, or of the second text library, for a window.
QString WindowText(std::uint32_t id);
QString ExtraWindowText(std::uint32_t id);

/// `text` as it reads in a window that runs from right to left: paths, dates and sizes keep their order
/// there. A text that itself begins in a right-to-left script is left alone.
QString KeptInOrder(const QString& text);

/// Gives a standard button the caption in the program's language. Before the texts are loaded it keeps the
/// toolkit's own, which is English like the messages shown then.
void SetCaption(QAbstractButton* button, std::uint32_t id);

/// A menu caption as toolbars, tooltips and screen readers show it: without the mark of its underlined
/// letter.
QString PlainCaption(QString caption);

} // namespace ui
