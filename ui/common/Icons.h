#pragma once

#include <QIcon>

namespace ui {

/// The program's icon `name` ("folder", "archive-zip", ...; resources/icons holds the drawings) in every size
/// that it is drawn in; in a selected row the drawing `selected`, where it is another. Made once and kept. An
/// icon without any size, and a warning, when there is none of that name.
QIcon Icon(const char* name, const char* selected);

inline QIcon Icon(const char* name) {
    return Icon(name, name);
}

} // namespace ui
