#include "ui/explorer/tree/ProtectedNodes.h"

#include "ui/explorer/tree/FolderTreeModel.h"

namespace ui {

namespace {

constexpr QLatin1String kDesktop("Desktop");
constexpr QLatin1String kDocuments("My Document");
constexpr QLatin1String kComputer("My Computer");

} // namespace

bool IsSpecialPlace(const FolderTreeModel& nodes, const QModelIndex& node) {
    if (!node.isValid())
        return false;
    const QString caption = nodes.TextOf(node);
    return caption == kDesktop || caption == kDocuments;
}

bool IsProtected(const FolderTreeModel& nodes, const QModelIndex& node) {
    return nodes.KindOf(node) != FolderTreeModel::NodeKind::kFolder || IsSpecialPlace(nodes, node) ||
           nodes.TextOf(node) == kComputer;
}

} // namespace ui
