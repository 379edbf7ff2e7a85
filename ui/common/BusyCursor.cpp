#include "ui/common/BusyCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace app {

BusyCursor::BusyCursor() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyCursor::~BusyCursor() {
    QGuiApplication::restoreOverrideCursor();
}

} // namespace app
