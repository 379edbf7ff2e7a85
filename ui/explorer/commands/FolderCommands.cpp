#include "ui/explorer/commands/FolderCommands.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/FileName.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/FileWork.h"
#include "ui/common/ShellCopy.h"
#include "ui/common/ShellDelete.h"
#include "ui/common/ShowProperties.h"
#include "ui/common/WindowTexts.h"
#include "ui/explorer/list/FileListAccess.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/Navigator.h"
#include "ui/explorer/tree/ProtectedNodes.h"
#include "ui/explorer/tree/TreeView.h"

namespace ui {

namespace {

constexpr const char* kProtectedTitle = "Warning";
constexpr int kLastFailure = 32;

} // namespace

bool FolderCommands::MayChange(const QModelIndex& node, std::uint32_t verbText) const {
    if (!IsProtected(on_.nodes, node))
        return true;
    const std::string text = app::LoadText(verbText) + " \"" + FromWindow(on_.nodes.TextOf(node)) + "\" " +
                             app::LoadText(IDS_CHANGE_NOT_POSSIBLE);
    app::Messages().Show({verbText, text, app::kMessageWarning, kProtectedTitle});
    return false;
}

bool FolderCommands::IsDeletionWanted() const {
    return app::ShowText(IDS_ASK_DELETE_FOLDER, IDS_DELETE_TITLE, app::kMessageQuestion) == app::kAnswerYes;
}

bool FolderCommands::DeleteFolder(const std::string& key) {
    const BusyCursor busy;
    const FileWork work(FileWork::Kind::kDelete, {key}, on_.window.DialogParent());
    return ShellDelete(key);
}

void FolderCommands::Delete() {
    const CommandRun run(on_);
    const QModelIndex node = on_.tree.currentIndex();
    if (!run.IsFirst() || !node.isValid())
        return;
    const std::string key = on_.nodes.KeyOf(node);
    if (!MayChange(node, IDS_DELETING) || !IsDeletionWanted()) {
        on_.window.ShowCurrentFolder();
        return;
    }
    on_.navigator.RemoveNode(key);
    ShowAfterDeletion(key, DeleteFolder(key));
}

void FolderCommands::DeleteByKey() {
    const CommandRun run(on_);
    const QModelIndex node = on_.tree.currentIndex();
    if (!run.IsFirst() || !node.isValid())
        return;
    const std::string key = on_.nodes.KeyOf(node);
    if (!MayChange(node, IDS_DELETING) || !IsDeletionWanted() || !DeleteFolder(key))
        return;
    on_.navigator.RemoveNode(key);
    ShowAfterDeletion(key, true);
}

/// Shows the current folder again, or, where that has gone too, the folder above. A folder that could not be
/// deleted gets its node back by listing the one above.
void FolderCommands::ShowAfterDeletion(const std::string& key, bool isGone) {
    const std::string above(base::FolderOf(key));
    if ((!isGone || !on_.nodes.Contains(app::Application().CurrentNodeKey)) && on_.nodes.Contains(above))
        on_.navigator.ClickNode(above);
    else
        on_.window.ShowCurrentFolder();
}

void FolderCommands::StartRename() {
    const QModelIndex node = on_.tree.currentIndex();
    if (on_.isRunning || on_.navigator.IsBusy() || !node.isValid() || !MayChange(node, IDS_RENAMING))
        return;
    on_.tree.setFocus();
    on_.tree.edit(node);
}

void FolderCommands::Rename(const std::string& key, const std::string& newName) {
    const CommandRun run(on_);
    const QModelIndex node = on_.nodes.IndexOf(key);
    if (!run.IsFirst() || !node.isValid() || newName.empty() || on_.nodes.TextOf(node) == ToWindow(newName))
        return;
    if (on_.nodes.IsMarked(node)) {
        const std::string text = app::WithUserName(app::LoadText(IDS_ASK_RENAME_MARKED));
        if (app::Messages().Show({IDS_ASK_RENAME_MARKED, text, app::kMessageQuestion,
                                  app::LoadText(IDS_RENAME_FOLDER)}) != app::kAnswerYes)
            return;
    }
    const std::string newKey = key.substr(0, key.rfind('\\') + 1) + newName;
    if (!ShellRename(key, newKey))
        return;
    const QModelIndex above = on_.nodes.IndexOf(key).parent();
    const std::string parent = above.isValid() ? on_.nodes.KeyOf(above) : std::string(kRootKey);
    on_.navigator.RemoveNode(key);
    on_.navigator.AddFolderNode(parent, newKey);
    on_.nodes.SortChildren(parent);
    on_.navigator.ClickNode(newKey);
}

void FolderCommands::Properties() {
    const std::string key = on_.navigator.SelectedKey();
    if (key.empty() || on_.isRunning || on_.navigator.IsBusy())
        return;
    const std::string path = key == kRootKey ? CurrentFolderPath(on_) : key;
    if (ShowProperties(path, on_.window.DialogParent()) <= kLastFailure)
        app::ShowText(IDS_NO_PROPERTIES, IDS_ERROR_TITLE, app::kMessageQuestion);
}

} // namespace ui
