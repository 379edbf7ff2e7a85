#include "ui/common/WindowTexts.h"
#include "ui/explorer/list/TextColours.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/FolderTreeNode.h"

#include <QIcon>

namespace ui {

QModelIndex FolderTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column != 0)
        return {};
    if (!parent.isValid())
        return row == 0 ? IndexOfNode(root_.get()) : QModelIndex();
    const Node* node = NodeOf(parent);
    const auto place = static_cast<std::size_t>(row);
    return place < node->children.size() ? IndexOfNode(node->children[place].get()) : QModelIndex();
}

QModelIndex FolderTreeModel::parent(const QModelIndex& child) const {
    const Node* parent = child.isValid() ? NodeOf(child)->parent : nullptr;
    return parent == nullptr ? QModelIndex() : IndexOfNode(parent);
}

int FolderTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? static_cast<int>(NodeOf(parent)->children.size()) : 1;
}

int FolderTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant FolderTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const Node* node = NodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return node->text;
    case Qt::DecorationRole:
        return icons_[static_cast<std::size_t>(node->kind)];
    case Qt::CheckStateRole:
        return node->isMarked ? Qt::Checked : Qt::Unchecked;
    case Qt::ForegroundRole:
        return node->isMarked ? QVariant(MarkedColour()) : QVariant();
    default:
        return {};
    }
}

bool FolderTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid())
        return false;
    Node* node = NodeOf(index);
    if (role == Qt::EditRole && node->kind == NodeKind::kFolder)
        emit RenameWanted(ToWindow(node->key), value.toString());
    if (role != Qt::CheckStateRole)
        return false;
    if (node == root_.get()) {
        emit RootChecked();
        return false;
    }
    node->isMarked = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {Qt::CheckStateRole, Qt::ForegroundRole});
    emit NodeChecked(ToWindow(node->key), node->isMarked);
    return true;
}

Qt::ItemFlags FolderTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
    return NodeOf(index)->kind == NodeKind::kFolder ? flags | Qt::ItemIsEditable : flags;
}

} // namespace ui
