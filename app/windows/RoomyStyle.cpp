#include "app/windows/RoomyStyle.h"

#include "app/windows/Appearance.h"

#include <QPainter>
#include <QStyleOption>

namespace app {

namespace {

constexpr int kHeaderMargin = 5;
constexpr int kTextMargin = 3;
constexpr int kRowPadding = 5;
constexpr int kButtonSlack = 4; ///< what captions under icons can do without; eleven stand side by side
constexpr float kOutlineStrength = 0.45F;

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
    if (type == CT_ToolButton)
        result.rwidth() -= kButtonSlack;
    return result;
}

int RoomyStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
    if (hint == SH_EtchDisabledText)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

void RoomyStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    if (!isBox || !IsDark(option->palette))
        return;
    QColor outline = option->palette.color(QPalette::Text);
    outline.setAlphaF(kOutlineStrength);
    painter->save();
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

QPixmap RoomyStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                        const QStyleOption* option) const {
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

} // namespace app
