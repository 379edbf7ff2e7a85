#include "ui/common/Fonts.h"

#include "app/ApplicationState.h"
#include "base/Numbers.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <array>
#include <utility>

namespace ui {

namespace {

using Script = QFontDatabase::WritingSystem;

constexpr std::array<std::pair<int, Script>, 14> kScripts = {{
    {128, Script::Japanese},
    {129, Script::Korean},
    {130, Script::Korean},
    {134, Script::SimplifiedChinese},
    {136, Script::TraditionalChinese},
    {161, Script::Greek},
    {162, Script::Latin},
    {163, Script::Vietnamese},
    {177, Script::Hebrew},
    {178, Script::Arabic},
    {186, Script::Latin},
    {204, Script::Cyrillic},
    {222, Script::Thai},
    {238, Script::Latin},
}};

void ApplyCharset(QWidget* control) {
    const QFont wanted = WithCharset(control->font(), app::Application().CharsetCode);
    if (wanted != control->font())
        control->setFont(wanted);
}

template <class Control>
void ApplyCharsetToAll(QWidget* window) {
    for (Control* control : window->findChildren<Control*>())
        ApplyCharset(control);
}

} // namespace

int LabelPointSize(std::string_view languageId) {
    return languageId == "0804" || languageId == "0404" ? 9 : 8;
}

std::optional<Script> ScriptOfCharset(std::string_view charsetCode) {
    const auto number = base::WholeNumber(charsetCode);
    for (const auto& [charset, script] : kScripts) {
        if (number == charset)
            return script;
    }
    return std::nullopt;
}

QFont WithCharset(const QFont& font, std::string_view charsetCode) {
    const auto script = ScriptOfCharset(charsetCode);
    if (!script || QFontDatabase::writingSystems(font.family()).contains(*script))
        return font;
    const QStringList families = QFontDatabase::families(*script);
    if (families.isEmpty())
        return font;
    QFont extended = font;
    extended.setFamilies({font.family(), families.first()});
    return extended;
}

void ApplyFonts(QWidget* window) {
    const int points = LabelPointSize(app::Application().LanguageId);
    for (QLabel* label : window->findChildren<QLabel*>()) {
        if (!label->property("keepsFontSize").toBool()) {
            QFont font = label->font();
            font.setPointSize(points);
            label->setFont(font);
        }
        ApplyCharset(label);
    }
    ApplyCharsetToAll<QAbstractItemView>(window);
    ApplyCharsetToAll<QLineEdit>(window);
    ApplyCharsetToAll<QTextEdit>(window);
    ApplyCharsetToAll<QPlainTextEdit>(window);
}

} // namespace ui
