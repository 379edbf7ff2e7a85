#include "ui/common/RoomyStyle.h"

#include "ui/common/Appearance.h"
#include "ui/common/Icons.h"

#include <QAbstractItemView>
#include <QGuiApplication>
#include <QPainter>
#include <QStyleOption>

namespace ui {

namespace {

constexpr int kHeaderMargin = 5;
constexpr int kTextMargin = 3;
constexpr int kRowPadding = 5;
constexpr int kButtonSlack = 4; ///< what captions under icons can do without; eleven stand side by side
constexpr int kButtonPadding = 10;
constexpr int kSmallestButton = 46;
constexpr float kOutlineStrength = 0.45F;

void DrawOutline(QPainter* painter, const QRect& rect, const QColor& colour) {
    painter->save();
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

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
    if (const auto* section = qstyleoption_cast<const QStyleOptionHeader*>(option);
        section != nullptr && widget != nullptr) {
        // Headers measure in bold for highlighted sections; here none is, and no bold font need be loaded.
        QStyleOptionHeader plain(*section);
        plain.fontMetrics = widget->fontMetrics();
        return QProxyStyle::sizeFromContents(type, &plain, size, widget);
    }
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_ItemViewItem)
        result.rheight() += kRowPadding;
    if (type == CT_PushButton)
        result.rwidth() += kButtonPadding;
    if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        button != nullptr && button->toolButtonStyle == Qt::ToolButtonTextUnderIcon)
        result.setWidth(qMax(result.width() - kButtonSlack, kSmallestButton));
    return result;
}

int RoomyStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
    if (hint == SH_EtchDisabledText || hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

void RoomyStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    // Rows of trees are outlined without a word about whose they are.
    const bool isRow = widget == nullptr || qobject_cast<const QAbstractItemView*>(widget) != nullptr;
    if (element == PE_FrameFocusRect && isRow) {
        // An outline alone: a filled one would veil the row's text and icon.
        DrawOutline(painter, option->rect, QGuiApplication::palette().color(QPalette::Highlight));
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    if (isBox && IsDark(option->palette)) {
        QColor outline = option->palette.color(QPalette::Text);
        outline.setAlphaF(kOutlineStrength);
        DrawOutline(painter, option->rect, outline);
    }
}

QIcon RoomyStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
    case SP_MessageBoxCritical:
        return Icon("message-error");
    case SP_MessageBoxQuestion:
        return Icon("message-question");
    case SP_MessageBoxWarning:
        return Icon("message-warning");
    case SP_MessageBoxInformation:
        return Icon("message-information");
    case SP_ToolBarHorizontalExtensionButton: // each bar asks for it, and the style's own is black on dark
        return Icon("more");
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

QPixmap RoomyStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                        const QStyleOption* option) const {
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

} // namespace ui
