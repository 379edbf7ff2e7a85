#include "ui/explorer/commands/FileCommands.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/FileName.h"
#include "platform/Files.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/FileWork.h"
#include "ui/common/ShellCopy.h"
#include "ui/common/ShellDelete.h"
#include "ui/common/ShowProperties.h"
#include "ui/common/WindowTexts.h"
#include "ui/desktop/ClipboardFiles.h"
#include "ui/explorer/list/FileListAccess.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListView.h"
#include "ui/explorer/list/RowSelection.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/Navigator.h"
#include "ui/explorer/tree/ProtectedNodes.h"

namespace ui {

namespace {

constexpr int kLastFailure = 32;

bool IsDeletionWanted(const std::string& textEnd) {
    return app::Messages().Show({IDS_ASK_DELETE_FILES, app::LoadText(IDS_ASK_DELETE_FILES) + textEnd,
                                 app::kMessageQuestion, app::LoadText(IDS_DELETE_TITLE)}) == app::kAnswerYes;
}

} // namespace

void FileCommands::Copy() {
    const CommandRun run(on_);
    const std::vector<std::string> paths = on_.window.SelectedPaths();
    if (!run.IsFirst() || paths.empty())
        return;
    if (!ClipboardCopyFiles(paths))
        app::ShowText(IDS_NOT_ON_CLIPBOARD, IDS_ERROR_TITLE, app::kMessageError);
    on_.window.ShowCurrentFolder();
    SelectPaths(on_.list, on_.files, paths);
}

void FileCommands::Paste() {
    const CommandRun run(on_);
    if (!run.IsFirst())
        return;
    if (!ClipboardHoldsFiles()) {
        on_.window.ShowCurrentFolder();
        on_.window.ClearSelection();
        return;
    }
    const std::string folder = CurrentFolderPath(on_);
    std::vector<std::string> paths = ClipboardGetFiles();
    PasteFiles(paths, folder);
    ShowAfterPaste();
    for (std::string& path : paths)
        path = folder + std::string(base::LastComponent(path));
    SelectPaths(on_.list, on_.files, paths);
}

void FileCommands::PasteFiles(const std::vector<std::string>& paths, const std::string& folder) {
    const BusyCursor busy;
    FileWork work(FileWork::Kind::kCopy, paths, on_.window.DialogParent());
    for (const std::string& path : paths) {
        if (work.WasStopped())
            break;
        ShellCopy(path, folder);
    }
}

/// Lists the selected node, and the current folder where that is another.
void FileCommands::ShowAfterPaste() {
    const std::string selected = on_.navigator.SelectedKey();
    if (selected != kRootKey)
        on_.navigator.RefreshNode();
    if (selected == kRootKey || selected != app::Application().CurrentNodeKey)
        on_.window.ShowCurrentFolder();
}

void FileCommands::Delete() {
    const CommandRun run(on_);
    const std::vector<std::string> paths = on_.window.SelectedPaths();
    if (!run.IsFirst() || paths.empty() || !IsDeletionWanted("\r\n"))
        return;
    {
        const BusyCursor busy;
        FileWork work(FileWork::Kind::kDelete, paths, on_.window.DialogParent());
        for (const std::string& path : paths) {
            if (work.WasStopped())
                break;
            if (IsFolder(path))
                on_.navigator.RemoveNode(path);
            ShellDelete(path);
        }
    }
    ShowParentOf(paths.back());
}

void FileCommands::ShowParentOf(const std::string& path) {
    const std::string folder(base::FolderOf(path));
    const bool isDriveRoot = folder.ends_with('\\');
    const std::string selected = on_.navigator.SelectedKey();
    if (!isDriveRoot && IsSpecialPlace(on_.nodes, on_.nodes.IndexOf(selected)))
        on_.navigator.ClickNode(selected);
    else if (on_.nodes.Contains(folder))
        on_.navigator.ClickNode(folder);
    else
        on_.window.ShowCurrentFolder(); // a folder that has no node, such as the user's desktop
}

void FileCommands::DeleteByKey() {
    const CommandRun run(on_);
    const std::vector<std::string> paths = on_.window.SelectedPaths();
    if (!run.IsFirst() || paths.empty())
        return;
    const int row = on_.list.SelectedRows().first();
    if (IsDeletionWanted("")) {
        const BusyCursor busy;
        FileWork work(FileWork::Kind::kDelete, paths, on_.window.DialogParent());
        for (const std::string& path : paths) {
            if (work.WasStopped())
                break;
            ShellDelete(path);
        }
    }
    on_.window.ShowCurrentFolder();
    // The keyboard goes on from where it was.
    const int next = qMin(row, on_.files.rowCount() - 1);
    on_.list.selectionModel()->setCurrentIndex(on_.files.index(next, 0), QItemSelectionModel::NoUpdate);
}

void FileCommands::StartRename() {
    const int row = on_.list.SelectedRow();
    if (row >= 0 && !on_.isRunning && !on_.navigator.IsBusy())
        on_.list.EditName(row);
}

void FileCommands::Rename(const std::string& path, const std::string& newName) {
    const CommandRun run(on_);
    const int row = on_.files.FindRow(path);
    if (!run.IsFirst() || row < 0 || newName.empty() || newName == base::LastComponent(path))
        return;
    const bool isFolder = on_.files.Row(row).isFolder;
    const std::string newPath = path.substr(0, path.rfind('\\') + 1) + newName;
    if (!ShellRename(path, newPath))
        return;
    on_.files.RenameRow(row, ToWindow(newName));
    on_.list.scrollTo(on_.list.currentIndex());
    if (isFolder) {
        RenameNode(path, newPath);
        on_.navigator.Refresh();
        SelectPaths(on_.list, on_.files, {newPath});
    }
}

void FileCommands::RenameNode(const std::string& path, const std::string& newPath) {
    on_.navigator.RemoveNode(path);
    on_.navigator.AddFolderNode(app::Application().CurrentNodeKey, newPath);
}

void FileCommands::NewFolder() {
    const CommandRun run(on_);
    if (!run.IsFirst())
        return;
    const std::string title = FromWindow(PlainCaption(WindowText(IDS_NEW_FOLDER)));
    const auto name =
        app::Messages().Ask(app::WithUserName(app::LoadText(IDS_ASK_FOLDER_NAME)), title, false);
    if (!name || name->empty())
        return;
    const std::string path = CurrentFolderPath(on_) + *name;
    if (base::IsFileName(*name))
        platform::CreateFolder(path);
    if (on_.navigator.SelectedKey() == kRootKey)
        on_.navigator.RebuildTree();
    on_.window.ShowCurrentFolder();
    on_.nodes.SortChildren(on_.navigator.SelectedKey());
    SelectPaths(on_.list, on_.files, {path});
}

void FileCommands::Properties() {
    const int row = on_.list.SelectedRow();
    if (row < 0 || on_.isRunning || on_.navigator.IsBusy())
        return;
    if (ShowProperties(on_.files.FullPath(row), on_.window.DialogParent()) <= kLastFailure)
        app::ShowText(IDS_NO_PROPERTIES, IDS_ERROR_TITLE, app::kMessageError);
}

} // namespace ui
