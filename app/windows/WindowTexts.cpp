#include "app/windows/WindowTexts.h"

#include "app/core/Texts.h"

namespace app {

QString ToWindow(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromWindow(const QString& text) {
    return text.toStdString();
}

QString WindowText(std::uint32_t id) {
    return ToWindow(LoadText(id));
}

QString ExtraWindowText(std::uint32_t id) {
    return ToWindow(LoadExtraText(id));
}

QString WithoutMnemonics(QString caption) {
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace app
