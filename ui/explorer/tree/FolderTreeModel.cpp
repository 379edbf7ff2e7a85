#include "ui/explorer/tree/FolderTreeModel.h"

#include "base/Letters.h"
#include "ui/common/WindowTexts.h"
#include "ui/explorer/tree/FolderTreeNode.h"
#include "ui/explorer/tree/NodeIcons.h"

#include <QIcon>

#include <algorithm>

namespace ui {

FolderTreeModel::FolderTreeModel(QObject* parent)
    : QAbstractItemModel(parent), root_(std::make_unique<Node>()),
      icons_({RootIcon(), DriveIcon(), FolderIcon()}) {
    root_->key = kRootKey;
    nodes_.emplace(root_->key, root_.get());
}

FolderTreeModel::~FolderTreeModel() = default;

void FolderTreeModel::SetRootText(const QString& text) {
    root_->text = text;
    const QModelIndex index = IndexOfNode(root_.get());
    emit dataChanged(index, index);
}

FolderTreeModel::Node* FolderTreeModel::Find(std::string_view key) const {
    const auto found = nodes_.find(std::string(key));
    return found == nodes_.end() ? nullptr : found->second;
}

void FolderTreeModel::AddNodes(std::string_view parentKey, NodeKind kind, std::vector<NewNode> nodes) {
    Node* parent = Find(parentKey);
    if (parent == nullptr)
        return;
    std::vector<std::unique_ptr<Node>> added;
    for (NewNode& node : nodes) {
        auto made = std::make_unique<Node>();
        if (!nodes_.emplace(node.key, made.get()).second)
            continue;
        made->key = std::move(node.key);
        made->text = ToWindow(node.text);
        made->sortText = ToWindow(base::ToUpper(node.text));
        made->kind = kind;
        made->isMarked = node.isMarked;
        made->parent = parent;
        made->row = static_cast<int>(parent->children.size() + added.size());
        added.push_back(std::move(made));
    }
    if (added.empty())
        return;
    const int first = static_cast<int>(parent->children.size());
    beginInsertRows(IndexOfNode(parent), first, first + static_cast<int>(added.size()) - 1);
    std::ranges::move(added, std::back_inserter(parent->children));
    endInsertRows();
}

void FolderTreeModel::Forget(const Node& node) {
    nodes_.erase(node.key);
    for (const auto& child : node.children)
        Forget(*child);
}

void FolderTreeModel::RemoveNode(std::string_view key) {
    Node* node = Find(key);
    if (node == nullptr || node == root_.get())
        return;
    Node* parent = node->parent;
    beginRemoveRows(IndexOfNode(parent), node->row, node->row);
    Forget(*node);
    parent->children.erase(parent->children.begin() + node->row);
    parent->NumberChildren();
    endRemoveRows();
}

void FolderTreeModel::SortChildren(std::string_view key) {
    Node* parent = Find(key);
    const auto byText = [](const std::unique_ptr<Node>& left, const std::unique_ptr<Node>& right) {
        return left->sortText < right->sortText;
    };
    if (parent == nullptr || std::ranges::is_sorted(parent->children, byText))
        return;
    emit layoutAboutToBeChanged({QPersistentModelIndex(IndexOfNode(parent))}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::ranges::stable_sort(parent->children, byText);
    parent->NumberChildren();
    QModelIndexList after;
    for (const QModelIndex& index : before)
        after.append(IndexOfNode(NodeOf(index)));
    changePersistentIndexList(before, after);
    emit layoutChanged({QPersistentModelIndex(IndexOfNode(parent))}, VerticalSortHint);
}

bool FolderTreeModel::Contains(std::string_view key) const {
    return Find(key) != nullptr;
}

QModelIndex FolderTreeModel::IndexOf(std::string_view key) const {
    const Node* node = Find(key);
    return node == nullptr ? QModelIndex() : IndexOfNode(node);
}

QModelIndex FolderTreeModel::IndexOfNode(const Node* node) const {
    return createIndex(node->row, 0, node);
}

const std::string& FolderTreeModel::KeyOf(const QModelIndex& index) const {
    return NodeOf(index)->key;
}

FolderTreeModel::NodeKind FolderTreeModel::KindOf(const QModelIndex& index) const {
    return NodeOf(index)->kind;
}

QString FolderTreeModel::TextOf(const QModelIndex& index) const {
    return NodeOf(index)->text;
}

bool FolderTreeModel::IsMarked(const QModelIndex& index) const {
    return NodeOf(index)->isMarked;
}

std::vector<std::string> FolderTreeModel::ChildKeys(std::string_view key) const {
    std::vector<std::string> keys;
    if (const Node* node = Find(key)) {
        for (const auto& child : node->children)
            keys.push_back(child->key);
    }
    return keys;
}

bool FolderTreeModel::IsConsistent(const Node& node, std::size_t& count) const {
    ++count;
    if (Find(node.key) != &node)
        return false;
    for (std::size_t row = 0; row < node.children.size(); ++row) {
        const Node& child = *node.children[row];
        if (child.parent != &node || child.row != static_cast<int>(row) || !IsConsistent(child, count))
            return false;
    }
    return true;
}

bool FolderTreeModel::IsConsistent() const {
    std::size_t count = 0;
    return IsConsistent(*root_, count) && count == nodes_.size();
}

} // namespace ui
