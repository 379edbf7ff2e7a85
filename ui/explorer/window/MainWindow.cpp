#include "ui/explorer/window/MainWindow.h"

#include "base/Letters.h"
#include "platform/Process.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/WindowTexts.h"
#include "ui/desktop/DocumentOpener.h"
#include "ui/explorer/commands/CommandSet.h"
#include "ui/explorer/commands/Commands.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListView.h"
#include "ui/explorer/list/RowSelection.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/Navigator.h"
#include "ui/explorer/tree/TreeView.h"
#include "ui/explorer/window/ExplorerPanes.h"
#include "ui/explorer/window/StatusStrip.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QWindow>

namespace ui {

namespace {

constexpr std::string_view kCabinetExtension = ".cab";

/// Ends each path in what an archive window is handed.
constexpr const char* kPathEnd = "\r\n";

} // namespace

frmtarget::frmtarget(ArchiveDialogs* dialogs)
    : dialogs_(dialogs != nullptr ? *dialogs : ownDialogs_), extract_(*this, dialogs_), geometry_(this) {
    setObjectName(QStringLiteral("frmtarget"));
    setAnimated(false);
    panes_ = new ExplorerPanes(this);
    setCentralWidget(panes_);
    nodes_ = new FolderTreeModel(this);
    files_ = new FileListModel(kinds_, this);
    panes_->Tree()->setModel(nodes_);
    panes_->List()->SetFileModel(files_);
    commands_ = new Commands(this);
    commands_->FillMenus(menuBar());
    commands_->FillToolBars(panes_->FolderTools(), panes_->FileTools());
    navigator_ = new Navigator({panes_->Tree(), nodes_, panes_->List(), files_, &kinds_},
                               FolderMarks(platform::ProgramFolder()), this);
    commandSet_ = new CommandSet({*this, *navigator_, *nodes_, *panes_->Tree(), *files_, *panes_->List()},
                                 *commands_, this);
    ConnectCommands();
    ConnectPanes();
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &frmtarget::FocusWindowChanged);
    ApplyGeometry();
}

frmtarget::~frmtarget() {
    // The views use objects that this window owns, and react to focus changes, so they are deleted while all
    // of it still exists.
    disconnect(qApp, nullptr, this, nullptr);
    hide();
    delete panes_;
}

void frmtarget::ConnectCommands() {
    connect(commands_->up, &QAction::triggered, navigator_, &Navigator::GoUp);
    connect(commands_->mnuFileOpen, &QAction::triggered, this, &frmtarget::OpenSelected);
    connect(commands_->mnuFileExtract, &QAction::triggered, this, &frmtarget::Extract);
    connect(commands_->mnuFileRefresh, &QAction::triggered, navigator_, &Navigator::Refresh);
    connect(commands_->mnuClose1, &QAction::triggered, this, &QWidget::close);
    connect(commands_->mnuClose2, &QAction::triggered, this, &QWidget::close);
}

void frmtarget::ConnectPanes() {
    const ListView* list = panes_->List();
    connect(panes_->Tree(), &TreeView::FocusReceived, this, [this] { ShowPane(false); });
    connect(list, &ListView::FocusReceived, this, [this] { ShowPane(true); });
    connect(list, &ListView::OpenPressed, this, [this] { OpenRow(panes_->List()->SelectedRow()); });
    connect(list, &ListView::RefreshPressed, navigator_, &Navigator::RefreshNode);
    connect(list, &ListView::RenamePressed, commands_->nmuFileRename, &QAction::trigger);
    connect(list, &ListView::CopyPressed, commands_->mnuFileCopy, &QAction::trigger);
    connect(list, &ListView::MenuWanted, this, &frmtarget::ShowFileMenuAt);
    connect(navigator_, &Navigator::LocationChanged, panes_->Strip(), &StatusStrip::SetLocation);
    connect(navigator_, &Navigator::LayoutWanted, panes_, &ExplorerPanes::LayoutPanes);
    connect(navigator_, &Navigator::SpaceWanted, this,
            [this](bool show) { show ? ShowDriveSpace() : RefreshDriveSpace(); });
    connect(
        navigator_, &Navigator::BecameIdle, this,
        [this] {
            if (closeWaits_)
                close();
        },
        Qt::QueuedConnection);
}

void frmtarget::ShowPane(bool list) {
    if (panes_->FileTools()->isHidden() != list)
        return;
    if (list)
        commandSet_->UpdatePaste();
    panes_->ShowFileTools(list);
    commands_->ShowFileMenu(list);
    panes_->LayoutPanes();
}

void frmtarget::OpenSelected() {
    const QList<int> rows = panes_->List()->SelectedRows();
    if (rows.size() == 1) {
        OpenRow(rows.first());
        return;
    }
    std::string cabinets;
    for (const std::string& path : SelectedPaths()) {
        if (base::EndsWithNoCase(path, kCabinetExtension))
            cabinets += path + kPathEnd;
        else
            OpenDocument(path);
    }
    if (!cabinets.empty())
        OpenCabinets(cabinets);
}

void frmtarget::OpenRow(int row) {
    if (row < 0 || IsBusy())
        return;
    const std::string path = files_->FullPath(row);
    if (files_->Row(row).isFolder) {
        navigator_->OpenFolder(path);
    } else if (files_->Row(row).isCabinet) {
        OpenCabinets(path + kPathEnd);
    } else {
        const BusyCursor busy;
        OpenDocument(path);
    }
}

void frmtarget::OpenCabinets(const std::string& archives) {
    dialogs_.ShowCab(archives, this);
    ShowCurrentFolder();
}

void frmtarget::Extract() {
    if (!IsBusy())
        extract_.Run();
}

void frmtarget::ShowFileMenuAt(const QPoint& place) {
    commandSet_->UpdatePaste();
    commands_->FileMenu()->popup(place);
}

std::vector<std::string> frmtarget::SelectedPaths() const {
    std::vector<std::string> paths;
    for (const int row : panes_->List()->SelectedRows())
        paths.push_back(files_->FullPath(row));
    return paths;
}

void frmtarget::ShowFolder(const std::string& path, const std::string& key) {
    navigator_->ShowFolder(path, key);
}

void frmtarget::ShowCurrentFolder() {
    navigator_->ShowCurrentFolder();
}

void frmtarget::ClearSelection() {
    panes_->List()->clearSelection();
}

bool frmtarget::SelectRow(std::string_view name) {
    const int row = files_->FindRow(name);
    if (row < 0)
        return false;
    const QModelIndex index = files_->index(row, FileListModel::kName);
    panes_->List()->selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select |
                                                                 QItemSelectionModel::Rows);
    panes_->List()->scrollTo(index);
    return true;
}

bool frmtarget::IsBusy() const {
    return navigator_->IsBusy() || commandSet_->IsRunning();
}

bool frmtarget::SelectPaths(const std::vector<std::string>& paths) {
    ui::SelectPaths(*panes_->List(), *files_, paths);
    return panes_->List()->selectionModel()->hasSelection();
}

bool frmtarget::IsProgramWindow(const QWindow* window) const {
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->windowHandle() == window)
            return widget->objectName().startsWith(QLatin1String("frm"));
    }
    return false;
}

void frmtarget::FocusWindowChanged(QWindow* window) {
    if (window == nullptr || !IsProgramWindow(window))
        return; // another program, a message box or a menu: nothing of ours came between
    if (window != windowHandle()) {
        otherWindowWasActive_ = true;
    } else if (otherWindowWasActive_) {
        otherWindowWasActive_ = false;
        ApplyGeometry();
    }
}

void frmtarget::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    windowHandle()->installEventFilter(this);
}

bool frmtarget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose && watched == windowHandle()) {
        // Now the window manager's frame is known, which the saved size includes; and nothing is painted yet.
        watched->removeEventFilter(this);
        ApplyGeometry();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmtarget::closeEvent(QCloseEvent* event) {
    if (IsBusy()) {
        // The handlers on the stack below end first; then the window is asked to close once more.
        closeWaits_ = true;
        navigator_->CutShort();
        commandSet_->Stop();
        event->ignore();
        return;
    }
    closeWaits_ = false;
    if (!unloaded_)
        Unload();
    event->accept();
    emit Unloaded();
}

} // namespace ui
