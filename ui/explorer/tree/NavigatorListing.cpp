#include "app/ApplicationState.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/Yield.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListFolderFiles.h"
#include "ui/explorer/tree/DriveList.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/Navigator.h"
#include "ui/explorer/tree/TreeView.h"

namespace ui {

bool Navigator::KeepGoing() {
    Yield();
    return !cutShort_;
}

void Navigator::ListFolder(const std::string& path, const std::string& key) {
    Run([&] {
        const BusyCursor busy;
        YieldNow();
        if (!cutShort_)
            ListSubfolders(path, key);
        if (!cutShort_)
            ListFiles(path);
    });
}

void Navigator::ListSubfolders(const std::string& path, const std::string& key) {
    base::SystemError error;
    const auto search = path.empty() ? nullptr : platform::FindFiles::Start(path, error);
    if (!search)
        return;
    const MarkSet marks = marks_.Read();
    std::vector<FolderTreeModel::NewNode> found;
    platform::FindData entry;
    while (search->Next(entry) && KeepGoing()) {
        const bool isFolder = (entry.attributes & platform::kAttributeDirectory) != 0;
        if (isFolder && entry.name != "." && entry.name != "..")
            found.push_back({path + entry.name, entry.name, marks.IsMarked(path + entry.name)});
    }
    parts_.nodes->AddNodes(key, FolderTreeModel::NodeKind::kFolder, std::move(found));
}

void Navigator::ListFiles(const std::string& path) {
    const unsigned listing = ++listings_;
    parts_.files->Clear();
    std::vector<FileRow> rows = ListFolderFiles(path, *parts_.kinds, [this] { return KeepGoing(); });
    if (listing == listings_)
        parts_.files->SetRows(path, std::move(rows));
}

void Navigator::ShowFolder(const std::string& path, const std::string& key) {
    Run([&] {
        ListFolder(path, key);
        const QModelIndex node = parts_.nodes->IndexOf(key);
        if (!node.isValid())
            return;
        parts_.tree->expand(node);
        parts_.tree->setCurrentIndex(node);
    });
}

void Navigator::ShowCurrentFolder() {
    ShowFolder(app::Application().CurrentPath, app::Application().CurrentNodeKey);
}

void Navigator::AddDriveNode(const std::string& root) {
    if (platform::GetDriveType(root) != platform::DriveType::kRemovable)
        return;
    parts_.nodes->AddNodes(kRootKey, FolderTreeModel::NodeKind::kDrive,
                           {{root, root, marks_.IsMarked(root)}});
}

void Navigator::FuncRemovableDrive() {
    for (const std::string& root : RemovableDriveRoots())
        AddDriveNode(root);
}

void Navigator::RebuildTree() {
    const std::string root(kRootKey);
    for (const std::string& key : parts_.nodes->ChildKeys(root))
        parts_.nodes->RemoveNode(key);
    FuncRemovableDrive();
    parts_.tree->expand(parts_.nodes->IndexOf(root));
    Select(root);
}

void Navigator::RefreshDrives() {
    emit LayoutWanted();
    for (const std::string& key : parts_.nodes->ChildKeys(kRootKey)) {
        const bool isDrive =
            parts_.nodes->KindOf(parts_.nodes->IndexOf(key)) == FolderTreeModel::NodeKind::kDrive;
        if (isDrive && platform::GetDriveType(key) != platform::DriveType::kRemovable)
            parts_.nodes->RemoveNode(key);
    }
    FuncRemovableDrive();
}

} // namespace ui
