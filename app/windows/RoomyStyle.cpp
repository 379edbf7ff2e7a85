#include "app/windows/RoomyStyle.h"

namespace app {

namespace {

constexpr int kHeaderMargin = 5;
constexpr int kTextMargin = 3;
constexpr int kRowPadding = 5;

} // namespace

RoomyStyle::RoomyStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int RoomyStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_HeaderMargin:
        return kHeaderMargin;
    case PM_FocusFrameHMargin:
        return kTextMargin;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize RoomyStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_ItemViewItem)
        result.rheight() += kRowPadding;
    return result;
}

QPixmap RoomyStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                        const QStyleOption* option) const {
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

} // namespace app
