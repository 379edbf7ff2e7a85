#pragma once

#include "ui/explorer/tree/FolderTreeModel.h"

namespace ui {

/// One node of the tree. It knows its place among its parent's children, so that an index costs nothing.
struct FolderTreeModel::Node {
    std::string key;
    QString text;
    QString sortText; ///< in upper case
    NodeKind kind = NodeKind::kRoot;
    bool isMarked = false;
    Node* parent = nullptr;
    int row = 0;
    std::vector<std::unique_ptr<Node>> children;

    void NumberChildren() {
        int number = 0;
        for (const auto& child : children)
            child->row = number++;
    }
};

} // namespace ui
