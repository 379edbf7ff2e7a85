#include "ui/common/WindowTexts.h"

#include "app/Texts.h"

#include <QAbstractButton>

namespace ui {

QString ToWindow(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromWindow(const QString& text) {
    return text.toStdString();
}

QString WindowText(std::uint32_t id) {
    return ToWindow(app::LoadText(id));
}

QString ExtraWindowText(std::uint32_t id) {
    return ToWindow(app::LoadExtraText(id));
}

QString KeptInOrder(const QString& text) {
    const QChar leftToRightIsolate(0x2066);
    const QChar popIsolate(0x2069);
    return text.isEmpty() || text.isRightToLeft() ? text : leftToRightIsolate + text + popIsolate;
}

QString PlainCaption(QString caption) {
    const QString kept(QChar(0x1)); // stands in for a doubled ampersand, which means a single one
    return caption.replace(QLatin1String("&&"), kept)
        .remove(QLatin1Char('&'))
        .replace(kept, QLatin1String("&"));
}

void SetCaption(QAbstractButton* button, std::uint32_t id) {
    if (const QString caption = WindowText(id); !caption.isEmpty())
        button->setText(caption);
}

} // namespace ui
