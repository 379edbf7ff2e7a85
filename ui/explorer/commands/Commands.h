#pragma once

#include <QAction>
#include <QList>

class QMenu;
class QMenuBar;
class QToolBar;

namespace ui {

/// The window's commands: one action for each menu entry, named after it, which the menu and the toolbar
/// share.
class Commands : public QObject {
    Q_OBJECT

  public:
    explicit Commands(QObject* parent = nullptr);

    /// Makes the three menus and fills the toolbars.
    void FillMenus(QMenuBar* bar);
    void FillToolBars(QToolBar* folderTools, QToolBar* fileTools);

    /// Sets captions and tooltips in the language in use.
    void ApplyTexts();

    /// Shows the File menu or the Folder menu.
    void ShowFileMenu(bool fileMenu);

    /// Greys the commands that need a selected row while there is none.
    void EnableForSelection(bool hasSelection);

    QMenu* FileMenu() const { return fileMenu_; }

    QAction* mnuFolderNew;
    QAction* mnuFolderDel;
    QAction* nmuFolderRename;
    QAction* mnuFolderProperties;
    QAction* mnuClose1;

    QAction* mnuNewFolder;
    QAction* mnuFileOpen;
    QAction* mnuFileCompress;
    QAction* mnuFileExtract;
    QAction* mnuFileDel;
    QAction* nmuFileRename;
    QAction* mnuFileCopy;
    QAction* mnuFilePaste;
    QAction* mnuFileProperties;
    QAction* mnuFileRefresh;
    QAction* mnuClose2;

    QAction* mnuHelpWhat;
    QAction* mnuHelpOnline;
    QAction* mnuHelpUpdates;
    QAction* mnuHelpAbout;

    QAction* up; ///< on both toolbars and in no menu

  private:
    QAction* Add(const char* name, const char* key, const char* icon = nullptr);
    static void SetCaption(QAction* action, std::uint32_t textId, const QKeySequence& key = {});

    QMenu* folderMenu_ = nullptr;
    QMenu* fileMenu_ = nullptr;
    QMenu* newMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
};

} // namespace ui
