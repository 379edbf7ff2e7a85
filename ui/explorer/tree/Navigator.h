#pragma once

#include "ui/explorer/tree/FolderMarks.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

namespace ui {

class FileKinds;
class FileListModel;
class FolderTreeModel;
class ListView;
class TreeView;

/// Lists folders into the tree and the list, and keeps the current folder.
///
/// Listing lets window messages run, so a click may come during a listing. The click waits: the listing ends
/// early and the click is handled after it. Of several such clicks, the last counts.
class Navigator : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        TreeView* tree;
        FolderTreeModel* nodes;
        ListView* list;
        FileListModel* files;
        FileKinds* kinds;
    };

    Navigator(const Parts& parts, FolderMarks marks, QObject* parent);

    /// Adds the removable drives that the tree does not have yet.
    void FuncRemovableDrive();
    /// Adds the node of a drive that is removable and that the tree does not have.
    void AddDriveNode(const std::string& root);

    /// Lists the subfolders of `path` (with a last backslash) under the node `key` and its files in the list.
    void ListFolder(const std::string& path, const std::string& key);
    /// ListFolder, then expands and selects the node.
    void ShowFolder(const std::string& path, const std::string& key);
    /// ShowFolder with the current folder and node.
    void ShowCurrentFolder();

    /// What a click on a node does: shows its folder and makes it the current one.
    void ClickNode(const std::string& key);
    /// ClickNode for a folder that the list shows; a folder made since the tree was listed gets its node
    /// first.
    void OpenFolder(const std::string& path);
    /// Clicks the node above the selected one.
    void GoUp();
    /// Clicks the selected node again.
    void Refresh();
    /// Lists the selected node again; the refresh key.
    void RefreshNode();

    /// Takes a node out of the tree; the node above becomes the selected one where this was it.
    void RemoveNode(const std::string& key);
    /// Adds the node of the folder `path`, marked where it is, under the node `parentKey`.
    void AddFolderNode(const std::string& parentKey, const std::string& path);
    /// Builds the tree anew from its root: the removable drives and nothing below them.
    void RebuildTree();

    /// Key of the selected node; empty when none is.
    std::string SelectedKey() const;

    bool IsBusy() const { return busy_ > 0; }

    /// Ends a listing that is under way as soon as it next lets messages run, and drops a click that waits
    /// for it.
    void CutShort();

    static constexpr std::string_view kMyComputer = "My Computer";

  signals:
    void LocationChanged(const QString& location);
    void LayoutWanted();
    /// The space display is to be brought up to date; `show` makes it visible.
    void SpaceWanted(bool show);
    /// The last of nested work has ended.
    void BecameIdle();

  private:
    /// A click that waits; `expand` is false when the keyboard only passes by.
    struct Click {
        std::string key;
        bool expand;
    };

    void Run(const std::function<void()>& work);
    void Visit(const Click& click);
    void VisitNow(const Click& click);
    void OpenRoot();
    void OpenNode(const Click& click);
    void RefreshDrives();
    void ListSubfolders(const std::string& path, const std::string& key);
    void ListFiles(const std::string& path);
    void Select(const std::string& key);
    void SetLocation(const std::string& location);
    bool KeepGoing();
    void NodeChecked(const QString& key, bool isChecked);
    void RootChecked();

    Parts parts_;
    FolderMarks marks_;
    int busy_ = 0;
    bool cutShort_ = false;
    unsigned listings_ = 0; ///< counts listings, so that one that was overtaken is seen to be
    std::optional<Click> waiting_;
    QString location_;
};

} // namespace ui
