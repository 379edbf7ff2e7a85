#include "ui/common/Appearance.h"

#include "ui/common/Icons.h"
#include "ui/common/RoomyStyle.h"
#include "ui/desktop/ShellInfo.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <array>
#include <charconv>

namespace ui {

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

/// Whether a palette is just the style's own, which means that the desktop has none to give.
bool IsStylesOwn(const QPalette& palette) {
    const QPalette own = QApplication::style()->standardPalette();
    constexpr std::array kRoles = {QPalette::Window, QPalette::Base, QPalette::Text, QPalette::Highlight};
    return std::ranges::all_of(kRoles, [&](auto role) { return palette.color(role) == own.color(role); });
}

QPalette ChoosePalette() {
    const QByteArray wanted = qgetenv("PELLARION_PALETTE");
    if (wanted == "dark")
        return DarkPalette();
    const QPalette desktops = QApplication::palette();
    return wanted == "light" || IsStylesOwn(desktops) ? LightPalette() : desktops;
}

QColor Mix(const QColor& one, const QColor& other, float share) {
    const auto channel = [share](float from, float to) { return from * share + to * (1 - share); };
    return QColor::fromRgbF(channel(one.redF(), other.redF()), channel(one.greenF(), other.greenF()),
                            channel(one.blueF(), other.blueF()));
}

/// Selected rows of lists and trees are tinted rather than filled, so that icons and text keep their colours.
QPalette ListPalette(QPalette palette) {
    const float strength = IsDark(palette) ? 0.5F : 0.24F;
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const QColor unfocused = Mix(text, base, 0.12F);
    palette.setColor(QPalette::Active, QPalette::Highlight,
                     Mix(palette.color(QPalette::Highlight), base, strength));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, unfocused);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, unfocused);
    palette.setColor(QPalette::HighlightedText, text);
    return palette;
}

/// Bars show how full something is, in windows behind others too.
QPalette BarPalette(QPalette palette) {
    palette.setColor(QPalette::Inactive, QPalette::Highlight,
                     palette.color(QPalette::Active, QPalette::Highlight));
    return palette;
}

} // namespace

void SetUpAppearance() {
    QApplication::setStyle(new RoomyStyle);
    const QPalette palette = ChoosePalette();
    QApplication::setPalette(palette);
    QApplication::setPalette(ListPalette(palette), "QAbstractItemView");
    QApplication::setPalette(BarPalette(palette), "QProgressBar");
    SetIconSource(&Icon);
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

} // namespace ui
