#include "ui/archive/ProgressStrip.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace ui {

ProgressStrip::ProgressStrip(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressStrip::SetFraction(double fraction) {
    const int before = FilledWidth();
    fraction_ = std::clamp(fraction, 0.0, 1.0);
    if (FilledWidth() != before)
        update();
}

QSize ProgressStrip::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 20, fontMetrics().height()};
}

int ProgressStrip::FilledWidth() const {
    return static_cast<int>(std::lround(fraction_ * width()));
}

void ProgressStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect strip = rect();
    painter.fillRect(strip, palette().color(QPalette::Base));
    const QRect filled(0, 0, FilledWidth(), height());
    painter.fillRect(QStyle::visualRect(layoutDirection(), strip, filled),
                     palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(strip.adjusted(0, 0, -1, -1));
}

} // namespace ui
