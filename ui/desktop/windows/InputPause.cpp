#include "ui/desktop/windows/InputPause.h"

#include <QApplication>
#include <QEvent>

namespace ui {

InputPause::InputPause() {
    QApplication::instance()->installEventFilter(this);
}

InputPause::~InputPause() {
    QApplication::processEvents();
}

bool InputPause::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        event->ignore(); // a window that is asked to close stays
        return true;
    default:
        return false;
    }
}

} // namespace ui
