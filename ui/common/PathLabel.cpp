#include "ui/common/PathLabel.h"

#include "ui/common/WindowTexts.h"

#include <QPainter>
#include <QStyle>

namespace ui {

PathLabel::PathLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize PathLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 8, fontMetrics().height()};
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    setToolTip(shown == text() ? QString() : text());
    const QString drawn = layoutDirection() == Qt::RightToLeft ? KeptInOrder(shown) : shown;
    style()->drawItemText(&painter, rect(),
                          static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
                          palette(), isEnabled(), drawn, foregroundRole());
}

} // namespace ui
