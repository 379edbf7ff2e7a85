#include "ui/common/FolderTree.h"

#include "base/Letters.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "platform/SpecialFolders.h"
#include "ui/desktop/ShellInfo.h"

#include <algorithm>
#include <vector>

namespace ui {
namespace {

constexpr int kPathRole = Qt::UserRole;
constexpr int kIsReadRole = Qt::UserRole + 1;
constexpr int kIsDriveRole = Qt::UserRole + 2;

std::vector<std::string> FoldersIn(const std::string& folder) {
    std::vector<std::string> names;
    base::SystemError error;
    const auto search = platform::FindFiles::Start(folder, error);
    for (platform::FindData data; search && search->Next(data);) {
        const bool isShown = (data.attributes & platform::kAttributeDirectory) != 0 &&
                             (data.attributes & platform::kAttributeHidden) == 0;
        // A name with "?" in it cannot be reached by its path.
        if (isShown && data.name != "." && data.name != ".." && data.name.find('?') == std::string::npos)
            names.push_back(data.name);
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return base::CompareNoCase(a, b) < 0; });
    return names;
}

std::string Joined(const std::string& folder, const std::string& name) {
    return folder.back() == '\\' ? folder + name : folder + '\\' + name;
}

bool IsUsable(platform::DriveType type) {
    return type != platform::DriveType::kUnknown && type != platform::DriveType::kNoRoot;
}

} // namespace

FolderTree::FolderTree(QObject* parent) : QStandardItemModel(parent) {
    for (const int place : {platform::kCsidlDesktopDirectory, platform::kCsidlPersonal}) {
        const std::string path = platform::GetSpecialFolderPath(place);
        if (platform::FolderExists(path))
            Add(invisibleRootItem(), QString::fromStdString(path.substr(path.rfind('\\') + 1)), path);
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string root = std::string(1, letter) + ":\\";
        if (IsUsable(platform::GetDriveType(root)))
            Add(invisibleRootItem(), QString::fromStdString(root.substr(0, 2)), root)
                ->setData(true, kIsDriveRole);
    }
}

QStandardItem* FolderTree::Add(QStandardItem* parent, const QString& name, const std::string& path) {
    auto* item = new QStandardItem(FileIcon(path, true), name);
    item->setData(QString::fromStdString(path), kPathRole);
    item->setEditable(false);
    // Gives every folder its unfolding mark before it is read.
    item->appendRow(new QStandardItem);
    parent->appendRow(item);
    return item;
}

std::string FolderTree::PathOf(const QModelIndex& index) const {
    return index.data(kPathRole).toString().toStdString();
}

void FolderTree::Read(const QModelIndex& index) {
    if (!index.data(kIsReadRole).toBool())
        ReadAgain(index);
}

void FolderTree::ReadAgain(const QModelIndex& index) {
    QStandardItem* folder = itemFromIndex(index);
    if (folder == nullptr)
        return;
    folder->setData(true, kIsReadRole);
    folder->removeRows(0, folder->rowCount());
    const std::string path = PathOf(index);
    for (const std::string& name : FoldersIn(path))
        Add(folder, QString::fromStdString(name), Joined(path, name));
}

QModelIndex FolderTree::Find(const std::string& path) {
    QStandardItem* found = nullptr;
    for (int row = 0; row < rowCount(); ++row)
        if (item(row)->data(kIsDriveRole).toBool() && base::StartsWithNoCase(path, PathOf(index(row, 0))))
            found = item(row);
    for (std::size_t from = 3; found != nullptr && from < path.size();) {
        const std::size_t to = std::min(path.find('\\', from), path.size());
        const std::string name = path.substr(from, to - from);
        Read(found->index());
        QStandardItem* next = nullptr;
        for (int row = 0; row < found->rowCount() && next == nullptr; ++row)
            if (base::EqualsNoCase(found->child(row)->text().toStdString(), name))
                next = found->child(row);
        if (next == nullptr)
            break;
        found = next;
        from = to + 1;
    }
    return found == nullptr ? QModelIndex() : found->index();
}

} // namespace ui
