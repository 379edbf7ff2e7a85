#pragma once

#include <QAbstractItemModel>
#include <QString>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ui {

/// Key of the tree's root node.
inline constexpr std::string_view kRootKey = "noderoot";

/// The folder tree: one root, a node per removable drive, and the folders listed so far. Nodes are named by
/// keys: a drive by its root such as "E:\", a folder by its full path such as "E:\Docs\Work".
class FolderTreeModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum class NodeKind { kRoot, kDrive, kFolder };

    /// A node to be added.
    struct NewNode {
        std::string key;
        std::string text;
        bool isMarked = false;
    };

    explicit FolderTreeModel(QObject* parent = nullptr);
    ~FolderTreeModel() override;

    /// Sets the text of the root node, which is always there.
    void SetRootText(const QString& text);

    /// Adds nodes under the node `parentKey`, in the order given; keys that the tree has already are passed
    /// over, and nothing is added when there is no such parent.
    void AddNodes(std::string_view parentKey, NodeKind kind, std::vector<NewNode> nodes);

    /// Takes out a node with all below it; the root stays.
    void RemoveNode(std::string_view key);

    /// Orders a node's children by text, without regard to letter case.
    void SortChildren(std::string_view key);

    bool Contains(std::string_view key) const;
    /// Index of the node with this key; invalid when there is none.
    QModelIndex IndexOf(std::string_view key) const;
    /// Key, kind and text of a valid index.
    const std::string& KeyOf(const QModelIndex& index) const;
    NodeKind KindOf(const QModelIndex& index) const;
    QString TextOf(const QModelIndex& index) const;
    bool IsMarked(const QModelIndex& index) const;
    /// Keys of a node's children, in their order.
    std::vector<std::string> ChildKeys(std::string_view key) const;

    /// Whether every node stands where it says and is found by its key; for tests.
    bool IsConsistent() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  signals:
    /// The user has set or cleared the check box of a drive or a folder.
    void NodeChecked(const QString& key, bool isChecked);
    /// The user wants to mark the root, which cannot be marked; its check box stays clear.
    void RootChecked();
    /// The user has typed another name for a folder. Nothing has changed yet.
    void RenameWanted(const QString& key, const QString& newName);

  private:
    struct Node;

    static Node* NodeOf(const QModelIndex& index) { return static_cast<Node*>(index.internalPointer()); }

    Node* Find(std::string_view key) const;
    QModelIndex IndexOfNode(const Node* node) const;
    void Forget(const Node& node);
    bool IsConsistent(const Node& node, std::size_t& count) const;

    std::unique_ptr<Node> root_;
    std::unordered_map<std::string, Node*> nodes_;
    std::vector<QIcon> icons_; ///< by kind of node
};

} // namespace ui
