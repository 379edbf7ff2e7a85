#include "ui/explorer/commands/CommandSet.h"

#include "ui/common/WindowTexts.h"
#include "ui/desktop/ClipboardFiles.h"
#include "ui/explorer/commands/Commands.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListView.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/TreeView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QMenu>

namespace ui {

CommandSet::CommandSet(const CommandTargets& targets, Commands& actions, QWidget* parent)
    : QObject(parent), targets_(targets), actions_(actions), files_(targets_), folders_(targets_),
      compress_(targets_), help_(parent) {
    ConnectFileCommands();
    ConnectFolderCommands();
    ConnectHelpCommands();
    UpdateForSelection();
}

void CommandSet::ConnectFileCommands() {
    const auto start = [this](QAction* action, void (FileCommands::*command)()) {
        connect(action, &QAction::triggered, this, [this, command] { (files_.*command)(); });
    };
    start(actions_.mnuFileCopy, &FileCommands::Copy);
    start(actions_.mnuFilePaste, &FileCommands::Paste);
    start(actions_.mnuFileDel, &FileCommands::Delete);
    start(actions_.nmuFileRename, &FileCommands::StartRename);
    start(actions_.mnuNewFolder, &FileCommands::NewFolder);
    start(actions_.mnuFolderNew, &FileCommands::NewFolder);
    start(actions_.mnuFileProperties, &FileCommands::Properties);
    connect(actions_.mnuFileCompress, &QAction::triggered, this, [this] { compress_.Run(); });
    connect(&targets_.list, &ListView::DeletePressed, this, [this] { files_.DeleteByKey(); });
    // This does not ask the action, whose last knowledge of the clipboard may be old.
    connect(&targets_.list, &ListView::PastePressed, this, [this] { files_.Paste(); });
    // The editor is closed before the name changes, and with it perhaps all rows.
    connect(
        &targets_.files, &FileListModel::RenameWanted, this,
        [this](const QString& path, const QString& newName) {
            files_.Rename(FromWindow(path), FromWindow(newName));
        },
        Qt::QueuedConnection);
    connect(targets_.list.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CommandSet::UpdateForSelection);
    connect(&targets_.files, &QAbstractItemModel::modelReset, this, &CommandSet::UpdateForSelection);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &CommandSet::UpdatePaste);
    connect(actions_.FileMenu(), &QMenu::aboutToShow, this, &CommandSet::UpdatePaste);
}

void CommandSet::ConnectFolderCommands() {
    connect(actions_.mnuFolderDel, &QAction::triggered, this, [this] { folders_.Delete(); });
    connect(actions_.nmuFolderRename, &QAction::triggered, this, [this] { folders_.StartRename(); });
    connect(actions_.mnuFolderProperties, &QAction::triggered, this, [this] { folders_.Properties(); });
    connect(&targets_.tree, &TreeView::DeletePressed, this, [this] { folders_.DeleteByKey(); });
    // Opening a folder leads the focus here, and pasting is what often comes next.
    connect(&targets_.tree, &TreeView::PastePressed, this, [this] { files_.Paste(); });
    connect(&targets_.tree, &TreeView::RenamePressed, this, [this] { folders_.StartRename(); });
    connect(
        &targets_.nodes, &FolderTreeModel::RenameWanted, this,
        [this](const QString& key, const QString& newName) {
            folders_.Rename(FromWindow(key), FromWindow(newName));
        },
        Qt::QueuedConnection);
}

void CommandSet::ConnectHelpCommands() {
    connect(actions_.mnuHelpWhat, &QAction::triggered, this, [this] { help_.What(); });
    connect(actions_.mnuHelpOnline, &QAction::triggered, this, [this] { help_.Online(); });
    connect(actions_.mnuHelpAbout, &QAction::triggered, this, [this] { help_.About(); });
}

void CommandSet::UpdateForSelection() {
    actions_.EnableForSelection(targets_.list.selectionModel()->hasSelection());
}

void CommandSet::UpdatePaste() {
    actions_.mnuFilePaste->setEnabled(ClipboardHoldsFiles());
}

} // namespace ui
