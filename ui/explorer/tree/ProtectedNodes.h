#pragma once

#include <QModelIndex>

namespace ui {

class FolderTreeModel;

/// Whether a node bears the name of one of the system's own places.
bool IsSpecialPlace(const FolderTreeModel& nodes, const QModelIndex& node);

/// Whether a node may be neither deleted nor renamed: the root, a drive, or one of the system's own places.
bool IsProtected(const FolderTreeModel& nodes, const QModelIndex& node);

} // namespace ui
