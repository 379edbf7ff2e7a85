#include "ui/common/Yield.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScopedValueRollback>

namespace ui {

namespace {

constexpr qint64 kMillisecondsBetween = 8;
constexpr int kDeepest = 4;

QElapsedTimer& SinceLast() {
    static QElapsedTimer timer;
    return timer;
}

} // namespace

void YieldNow() {
    static int depth = 0;
    if (depth >= kDeepest || QCoreApplication::instance() == nullptr)
        return;
    const QScopedValueRollback<int> deeper(depth, depth + 1);
    QCoreApplication::processEvents();
    SinceLast().start();
}

void Yield() {
    if (!SinceLast().isValid() || SinceLast().elapsed() >= kMillisecondsBetween)
        YieldNow();
}

} // namespace ui
