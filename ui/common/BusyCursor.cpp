#include "ui/common/BusyCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace ui {

BusyCursor::BusyCursor() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyCursor::~BusyCursor() {
    QGuiApplication::restoreOverrideCursor();
}

} // namespace ui
