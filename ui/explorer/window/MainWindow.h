#pragma once

#include "ui/explorer/commands/ArchiveDialogs.h"
#include "ui/explorer/commands/ExtractCommand.h"
#include "ui/explorer/list/FileKinds.h"
#include "ui/explorer/list/FileListAccess.h"
#include "ui/explorer/window/WindowGeometry.h"

#include <QMainWindow>

#include <array>
#include <optional>

class QWindow;

namespace ui {

class Commands;
class CommandSet;
class ExplorerPanes;
class FileListModel;
class FolderTreeModel;
class Navigator;

/// The main window: a folder tree and a file list side by side, with the commands on both.
class frmtarget : public QMainWindow, public FileListAccess {
    Q_OBJECT

  public:
    /// `dialogs` opens the archive windows and outlives the window; null: the program's own.
    explicit frmtarget(ArchiveDialogs* dialogs = nullptr);
    ~frmtarget() override;

    /// Loads the window: texts, layout, drives, column widths, first current folder, the administrator
    /// warning. To be called once, before the window is shown.
    void Load();

    /// Adds the removable drives to the tree.
    void FuncRemovableDrive();
    void ShowDriveSpace();
    void RefreshDriveSpace();

    std::vector<std::string> SelectedPaths() const override;
    void ShowFolder(const std::string& path, const std::string& key) override;
    void ShowCurrentFolder() override;
    void ClearSelection() override;
    bool SelectRow(std::string_view name) override;
    bool SelectPaths(const std::vector<std::string>& paths) override;

    QWidget* DialogParent() override { return this; }

  signals:
    /// The window has been unloaded: the program ends.
    void Unloaded();

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ConnectCommands();
    void ConnectPanes();
    void ApplyTexts();
    void ApplyGeometry();
    void ApplyColumnWidths();
    void SaveSettings() const;
    void LoadSteps();
    void Unload();
    void ShowPane(bool list);
    void OpenSelected();
    void OpenRow(int row);
    void OpenCabinets(const std::string& archives);
    void Extract();
    void ShowFileMenuAt(const QPoint& place);
    void FocusWindowChanged(QWindow* window);
    bool IsBusy() const;
    bool IsProgramWindow(const QWindow* window) const;

    ArchiveDialogs ownDialogs_;
    ArchiveDialogs& dialogs_;
    ExtractCommand extract_;
    FileKinds kinds_;
    ExplorerPanes* panes_;
    FolderTreeModel* nodes_;
    FileListModel* files_;
    Commands* commands_;
    Navigator* navigator_;
    CommandSet* commandSet_;
    WindowGeometry geometry_;
    std::array<std::optional<int>, 4> columnTwips_; ///< widths as read from the settings
    bool otherWindowWasActive_ = true; ///< a window of the program has been active since this one was
    bool closeWaits_ = false;          ///< the user has closed the window while it was busy
    bool unloaded_ = false;
};

} // namespace ui
