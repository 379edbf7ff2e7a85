#include "ui/common/Icons.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

/// Contrast ratio of two colours as WCAG 2 defines it, 1 to 21.
double Contrast(const QColor& one, const QColor& other) {
    const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

/// Share of the icon's area that stands out from a background with a contrast of 2.5 or more.
double VisibleShare(const QImage& image, const QColor& background) {
    int covered = 0;
    int visible = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alphaF() < 0.5F)
                continue;
            ++covered;
            visible += Contrast(color, background) >= 2.5 ? 1 : 0;
        }
    return covered == 0 ? 0.0 : static_cast<double>(visible) / covered;
}

QStringList Names() {
    QStringList names;
    ui::Icon("file"); // the resources are there once one icon is
    for (const QString& file : QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("*-16.rgba")}))
        names << file.chopped(8);
    return names;
}

TEST(Icons, ComeInEverySize) {
    ASSERT_GE(Names().size(), 30);
    for (const QString& name : Names())
        for (const int size : {16, 20, 24, 32, 40, 48, 64})
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/icons/%1-%2.rgba").arg(name).arg(size)))
                << qPrintable(name) << ' ' << size;
    const QSize sharpest(64, 64); // of a window's icon
    EXPECT_EQ(ui::Icon("pellarion").availableSizes().last(), sharpest);
    EXPECT_EQ(ui::Icon("pellarion").pixmap(sharpest, 2).size(), sharpest * 2);
}

TEST(Icons, AreSeenOnLightAndDark) {
    for (const QString& name : Names())
        for (const int size : {16, 24, 32}) {
            const QImage image = ui::Icon(qPrintable(name)).pixmap(size).toImage();
            EXPECT_GE(VisibleShare(image, QColor(0xf7, 0xf7, 0xf7)), 0.2) << qPrintable(name) << ' ' << size;
            EXPECT_GE(VisibleShare(image, QColor(0x23, 0x26, 0x29)), 0.2) << qPrintable(name) << ' ' << size;
        }
}

} // namespace
