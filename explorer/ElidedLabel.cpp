#include "explorer/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace explorer {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    setToolTip(shown == text() ? QString() : text());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
                     shown);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

} // namespace explorer
