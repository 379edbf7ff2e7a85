#pragma once

#include <QColor>

namespace ui {

/// Text colour of cabinets in the file list: blue, or a lighter blue that can be read on a dark palette.
QColor CabinetColour();

/// Text colour of marked folders in the tree: magenta, or a lighter one on a dark palette.
QColor MarkedColour();

} // namespace ui
