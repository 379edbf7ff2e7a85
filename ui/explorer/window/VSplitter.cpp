#include "ui/explorer/window/VSplitter.h"

#include "app/Twips.h"

#include <QMouseEvent>

#include <algorithm>

namespace ui {

VSplitter::VSplitter(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("VSplitter"));
    setCursor(Qt::SplitHCursor);
    resize(app::PixelsFromTwips(kWidthTwips), height());
}

void VSplitter::SetLeft(int twips) {
    if (left_ == twips)
        return;
    left_ = twips;
    emit Moved();
}

namespace {

/// Place of the mouse in the parent, from the edge where lines begin.
int PlaceFromStart(const QWidget* splitter, const QMouseEvent* event) {
    const QWidget* parent = splitter->parentWidget();
    const int place = splitter->mapToParent(event->position().toPoint()).x();
    return splitter->layoutDirection() == Qt::RightToLeft ? parent->width() - place : place;
}

} // namespace

void VSplitter::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        grip_ = PlaceFromStart(this, event) - app::PixelsFromTwips(left_);
}

void VSplitter::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    const int furthest = parentWidget()->width() - app::PixelsFromTwips(kWidthTwips);
    const int wanted = std::min(PlaceFromStart(this, event) - grip_, furthest);
    SetLeft(app::TwipsFromPixels(wanted));
}

} // namespace ui
