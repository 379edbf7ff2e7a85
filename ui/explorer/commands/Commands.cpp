#include "ui/explorer/commands/Commands.h"

#include "app/TextIds.h"
#include "app/Texts.h"
#include "ui/common/Icons.h"
#include "ui/common/WindowTexts.h"

#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace ui {

namespace {

QMenu* AddMenu(QMenuBar* bar, const char* name) {
    QMenu* menu = bar->addMenu(QString());
    menu->setObjectName(QString::fromLatin1(name));
    return menu;
}

} // namespace

Commands::Commands(QObject* parent) : QObject(parent) {
    mnuFolderNew = Add("mnuFolderNew", "new", "folder-new");
    mnuFolderDel = Add("mnuFolderDel", "delete", "delete");
    nmuFolderRename = Add("nmuFolderRename", "rename", "rename");
    mnuFolderProperties = Add("mnuFolderProperties", "properties", "properties");
    mnuClose1 = Add("mnuClose1", "close", "close");
    mnuNewFolder = Add("mnuNewFolder", "new", "folder-new");
    mnuFileOpen = Add("mnuFileOpen", "open", "open");
    mnuFileCompress = Add("mnuFileCompress", "compress", "compress");
    mnuFileExtract = Add("mnuFileExtract", "extract", "extract");
    mnuFileDel = Add("mnuFileDel", "delete", "delete");
    nmuFileRename = Add("nmuFileRename", "rename", "rename");
    mnuFileCopy = Add("mnuFileCopy", "copy", "copy");
    mnuFilePaste = Add("mnuFilePaste", "paste", "paste");
    mnuFileProperties = Add("mnuFileProperties", "properties", "properties");
    mnuFileRefresh = Add("mnuFileRefresh", "refresh");
    mnuClose2 = Add("mnuClose2", "close", "close");
    mnuHelpWhat = Add("mnuHelpWhat", "what");
    mnuHelpOnline = Add("mnuHelpOnline", "online");
    mnuHelpUpdates = Add("mnuHelpUpdates", "updates");
    mnuHelpAbout = Add("mnuHelpAbout", "about");
    up = Add("up", "up", "up");

    mnuHelpUpdates->setVisible(false);
}

QAction* Commands::Add(const char* name, const char* key, const char* icon) {
    auto* action = new QAction(this);
    if (icon != nullptr)
        action->setIcon(Icon(icon));
    action->setObjectName(QString::fromLatin1(name));
    action->setProperty("key", QString::fromLatin1(key));
    return action;
}

void Commands::FillMenus(QMenuBar* bar) {
    folderMenu_ = AddMenu(bar, "mnuFolder");
    folderMenu_->addActions({mnuFolderNew, mnuFolderDel, nmuFolderRename});
    folderMenu_->addSeparator();
    folderMenu_->addAction(mnuFolderProperties);
    folderMenu_->addSeparator();
    folderMenu_->addAction(mnuClose1);

    fileMenu_ = AddMenu(bar, "mnuFile");
    newMenu_ = fileMenu_->addMenu(QString());
    newMenu_->setObjectName(QStringLiteral("mnuFileNew"));
    newMenu_->addAction(mnuNewFolder);
    fileMenu_->addAction(mnuFileOpen);
    fileMenu_->addSeparator();
    fileMenu_->addActions({mnuFileCompress, mnuFileExtract});
    fileMenu_->addSeparator();
    fileMenu_->addActions({mnuFileDel, nmuFileRename});
    fileMenu_->addSeparator();
    fileMenu_->addActions({mnuFileCopy, mnuFilePaste});
    fileMenu_->addSeparator();
    fileMenu_->addActions({mnuFileProperties, mnuFileRefresh});
    fileMenu_->addSeparator();
    fileMenu_->addAction(mnuClose2);

    helpMenu_ = AddMenu(bar, "mnuHelp");
    helpMenu_->addActions({mnuHelpWhat, mnuHelpOnline, mnuHelpUpdates});
    helpMenu_->addSeparator();
    helpMenu_->addAction(mnuHelpAbout);
    ShowFileMenu(false);
}

void Commands::FillToolBars(QToolBar* folderTools, QToolBar* fileTools) {
    folderTools->addAction(up);
    folderTools->addSeparator();
    folderTools->addAction(mnuFolderNew);
    folderTools->addSeparator();
    folderTools->addActions({mnuFolderDel, nmuFolderRename, mnuFolderProperties});
    folderTools->addSeparator();
    folderTools->addAction(mnuClose1);

    fileTools->addAction(up);
    fileTools->addSeparator();
    fileTools->addAction(mnuNewFolder);
    fileTools->addSeparator();
    fileTools->addActions({mnuFileOpen, mnuFileCompress, mnuFileExtract, mnuFileDel, nmuFileRename});
    fileTools->addSeparator();
    fileTools->addActions({mnuFileCopy, mnuFilePaste, mnuFileProperties});
    fileTools->addSeparator();
    fileTools->addAction(mnuClose2);
}

void Commands::SetCaption(QAction* action, std::uint32_t textId, const QKeySequence& key) {
    const QString caption = WindowText(textId);
    // The views handle the keys themselves; the menu only shows them.
    const QString hint =
        key.isEmpty() ? QString() : QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
    action->setText(caption + hint);
    action->setIconText(PlainCaption(caption));
    action->setToolTip(PlainCaption(caption));
}

void Commands::ApplyTexts() {
    folderMenu_->setTitle(WindowText(IDS_FOLDER));
    SetCaption(mnuFolderNew, IDS_NEW_FOLDER);
    SetCaption(mnuFolderDel, IDS_DELETE, QKeySequence(Qt::Key_Delete));
    SetCaption(nmuFolderRename, IDS_RENAME, QKeySequence(Qt::Key_F2));
    SetCaption(mnuFolderProperties, IDS_PROPERTIES);
    SetCaption(mnuClose1, IDS_CLOSE);

    fileMenu_->setTitle(WindowText(IDS_FILE));
    newMenu_->setTitle(WindowText(IDS_NEW));
    SetCaption(mnuNewFolder, IDS_FOLDER);
    SetCaption(mnuFileOpen, IDS_OPEN, QKeySequence(Qt::Key_Return));
    SetCaption(mnuFileCompress, IDS_COMPRESS);
    SetCaption(mnuFileExtract, IDS_EXTRACT);
    SetCaption(mnuFileDel, IDS_DELETE, QKeySequence(Qt::Key_Delete));
    SetCaption(nmuFileRename, IDS_RENAME, QKeySequence(Qt::Key_F2));
    SetCaption(mnuFileCopy, IDS_COPY, QKeySequence::Copy);
    SetCaption(mnuFilePaste, IDS_PASTE, QKeySequence::Paste);
    SetCaption(mnuFileProperties, IDS_PROPERTIES);
    SetCaption(mnuFileRefresh, IDS_REFRESH, QKeySequence(Qt::Key_F5));
    SetCaption(mnuClose2, IDS_CLOSE);

    helpMenu_->setTitle(ExtraWindowText(IDS_EXTRA_HELP));
    mnuHelpWhat->setText(ToWindow(app::WithProductName(app::LoadExtraText(IDS_EXTRA_WHAT_IS))));
    mnuHelpOnline->setText(ExtraWindowText(IDS_EXTRA_ONLINE_SUPPORT));
    mnuHelpUpdates->setText(ExtraWindowText(IDS_EXTRA_CHECK_FOR_UPDATES));
    mnuHelpAbout->setText(ExtraWindowText(IDS_EXTRA_ABOUT));

    SetCaption(up, IDS_UP);
    // The toolbars say "new folder" where the menu, under "new", says "folder".
    mnuNewFolder->setIconText(PlainCaption(WindowText(IDS_NEW_FOLDER)));
    mnuNewFolder->setToolTip(mnuNewFolder->iconText());
}

void Commands::EnableForSelection(bool hasSelection) {
    for (QAction* action : {mnuFileOpen, mnuFileCompress, mnuFileExtract, mnuFileDel, nmuFileRename,
                            mnuFileCopy, mnuFileProperties})
        action->setEnabled(hasSelection);
}

void Commands::ShowFileMenu(bool fileMenu) {
    fileMenu_->menuAction()->setVisible(fileMenu);
    folderMenu_->menuAction()->setVisible(!fileMenu);
}

} // namespace ui
