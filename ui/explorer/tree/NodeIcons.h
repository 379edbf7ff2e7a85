#pragma once

#include <QIcon>

namespace ui {

/// Icons of the tree's nodes: the computer, a drive, and a folder that is drawn open while it is selected.
QIcon RootIcon();
QIcon DriveIcon();
QIcon FolderIcon();

} // namespace ui
