#include "ui/explorer/list/TextColours.h"

#include "ui/common/Appearance.h"

#include <QGuiApplication>
#include <QPalette>

namespace ui {

namespace {

QColor Readable(const QColor& onLight, const QColor& onDark) {
    return IsDark(QGuiApplication::palette()) ? onDark : onLight;
}

} // namespace

QColor CabinetColour() {
    return Readable(QColor(0, 0, 255), QColor(0x82, 0xb4, 0xff));
}

QColor MarkedColour() {
    return Readable(QColor(255, 0, 255), QColor(0xff, 0x8c, 0xff));
}

} // namespace ui
