#include "app/windows/Appearance.h"

#include "app/windows/Icons.h"
#include "app/windows/RoomyStyle.h"
#include "platform/desktop/ShellInfo.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <array>
#include <charconv>

namespace app {

namespace {

QPalette DarkPalette() {
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1f, 0x21, 0x24);
    const QColor text(0xe6, 0xe6, 0xe6);
    const QColor faint(0x7d, 0x80, 0x85);
    QPalette palette(text, QColor(0x3a, 0x3d, 0x41), QColor(0x5a, 0x5d, 0x62), QColor(0x18, 0x19, 0x1b),
                     QColor(0x35, 0x37, 0x3b), text, Qt::white, base, window);
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x27, 0x2a));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7a, 0xb8, 0xff));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3d, 0x41));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

QPalette LightPalette() {
    QPalette palette(QColor(0xf3, 0xf4, 0xf6));
    palette.setColor(QPalette::AlternateBase, QColor(0xf7, 0xf9, 0xfb));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// Selected rows of lists and trees are tinted rather than filled, so that icons and text keep their colours.
QPalette ListPalette(QPalette palette, bool dark) {
    const QColor active = dark ? QColor(0x2b, 0x4f, 0x75) : QColor(0xcf, 0xe3, 0xf8);
    const QColor inactive = dark ? QColor(0x3b, 0x3f, 0x45) : QColor(0xe3, 0xe6, 0xea);
    palette.setColor(QPalette::Active, QPalette::Highlight, active);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, inactive);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, inactive);
    palette.setColor(QPalette::HighlightedText, palette.color(QPalette::Text));
    return palette;
}

} // namespace

void SetUpAppearance() {
    QApplication::setStyle(new RoomyStyle);
    const QByteArray wanted = qgetenv("PELLARION_PALETTE");
    const bool dark = wanted == "dark" || (wanted.isEmpty() && IsDark(QApplication::palette()));
    const QPalette palette = dark ? DarkPalette() : LightPalette();
    QApplication::setPalette(palette);
    QApplication::setPalette(ListPalette(palette, dark), "QAbstractItemView");
    platform::SetIconSource(&Icon);
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Text).lightness() > palette.color(QPalette::Base).lightness();
}

Qt::LayoutDirection DirectionOf(std::string_view languageId) {
    constexpr std::array<unsigned, 4> kRightToLeft = {0x01, 0x0d, 0x20, 0x29};
    constexpr unsigned kPrimaryMask = 0x3ff;
    unsigned id = 0;
    std::from_chars(languageId.data(), languageId.data() + languageId.size(), id, 16);
    const bool rightToLeft = std::ranges::find(kRightToLeft, id & kPrimaryMask) != kRightToLeft.end();
    return rightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace app
