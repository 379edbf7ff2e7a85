#pragma once

#include <QModelIndex>

namespace ui {

class FolderTreeModel;

/// Whether a node has the name of one of the operating system's special places.
bool IsSpecialPlace(const FolderTreeModel& nodes, const QModelIndex& node);

/// Whether a node may be neither deleted nor renamed: the root, a drive, or one of the operating system's
/// special places.
bool IsProtected(const FolderTreeModel& nodes, const QModelIndex& node);

} // namespace ui
