#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/Settings.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "app/Twips.h"
#include "platform/Drives.h"
#include "platform/Process.h"
#include "platform/SpecialFolders.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/Fonts.h"
#include "ui/common/WindowTexts.h"
#include "ui/explorer/commands/Commands.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/ListView.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/Navigator.h"
#include "ui/explorer/tree/TreeView.h"
#include "ui/explorer/window/DriveSpaceFigures.h"
#include "ui/explorer/window/ExplorerPanes.h"
#include "ui/explorer/window/MainWindow.h"
#include "ui/explorer/window/StatusStrip.h"
#include "ui/explorer/window/VSplitter.h"

#include <QApplication>
#include <QHeaderView>
#include <QToolBar>

#include <exception>

namespace ui {

namespace {

constexpr std::size_t kDriveRootLength = 3;

} // namespace

void frmtarget::ApplyGeometry() {
    const app::Settings settings = app::ReadSettings();
    geometry_.Apply(settings);
    if (settings.splitterLeft)
        panes_->Splitter()->SetLeft(*settings.splitterLeft);
}

void frmtarget::ApplyTexts() {
    setWindowTitle(WindowText(IDS_WINDOW_TITLE));
    commands_->ApplyTexts();
    panes_->Strip()->SetCaptions(WindowText(IDS_LOCATION_LABEL), WindowText(IDS_FREE_SPACE_LABEL));
    ApplyFonts(this);
    for (QToolBar* tools : {panes_->FolderTools(), panes_->FileTools()}) {
        QFont font = tools->font(); // as small as labels, so that long captions find room side by side
        font.setPointSize(LabelPointSize(app::Application().LanguageId));
        tools->setFont(font);
    }
    static_assert(IDS_COLUMN_NAME + FileListModel::kModified == IDS_COLUMN_MODIFIED);
    for (std::uint32_t column = 0; column < FileListModel::kVisibleColumns; ++column)
        files_->SetHeader(static_cast<FileListModel::Column>(column), WindowText(IDS_COLUMN_NAME + column));
    kinds_.SetEncryptedTypeText(WindowText(IDS_ENCRYPTED_FILE));
    panes_->List()->SetEmptyText(WindowText(IDS_EMPTY_FOLDER));
    // The menus' titles name the panes too.
    panes_->ApplyAccessibleNames(PlainCaption(WindowText(IDS_FOLDER)), PlainCaption(WindowText(IDS_FILE)));
}

void frmtarget::Load() {
    try {
        LoadSteps();
    } catch (const std::exception& error) {
        app::ShowError(error.what());
    }
}

void frmtarget::LoadSteps() {
    ApplyTexts();
    panes_->LayoutPanes();
    nodes_->SetRootText(WindowText(IDS_MY_COMPUTER));
    FuncRemovableDrive();
    const QModelIndex root = nodes_->IndexOf(kRootKey);
    panes_->Tree()->expand(root);
    panes_->Tree()->setCurrentIndex(root);
    ShowDriveSpace();
    ApplyColumnWidths();

    app::ApplicationState& state = app::Application();
    if (state.CurrentNodeKey.empty() && state.CurrentPath.empty()) {
        state.CurrentPath = platform::GetSpecialFolderPath(platform::kCsidlDesktopDirectory) + '\\';
        state.CurrentNodeKey = kRootKey;
    }
    if (!platform::IsNTAdmin()) {
        app::Messages().Show({IDS_EXTRA_NOT_ADMINISTRATOR,
                              app::WithUserName(app::LoadExtraText(IDS_EXTRA_NOT_ADMINISTRATOR)),
                              app::kMessageWarning, app::LoadText(IDS_WARNING_TITLE)});
    }
}

void frmtarget::ApplyColumnWidths() {
    columnTwips_ = app::ReadSettings().columnWidths;
    int column = 0;
    for (const std::optional<int> twips : columnTwips_) {
        if (twips)
            panes_->List()->SetColumnWidth(column, app::PixelsFromTwips(*twips));
        ++column;
    }
}

void frmtarget::SaveSettings() const {
    app::Settings settings = app::ReadSettings();
    geometry_.Save(settings);
    for (std::size_t column = 0; column < columnTwips_.size(); ++column) {
        const int width = panes_->List()->ColumnWidth(static_cast<int>(column));
        const std::optional<int> read = columnTwips_[column];
        settings.columnWidths[column] =
            read && app::PixelsFromTwips(*read) == width ? *read : app::TwipsFromPixels(width);
    }
    if (panes_->Splitter()->Left() >= VSplitter::kSmallestLeft)
        settings.splitterLeft = panes_->Splitter()->Left();
    app::SaveSettings(settings);
}

void frmtarget::FuncRemovableDrive() {
    navigator_->FuncRemovableDrive();
}

void frmtarget::ShowDriveSpace() {
    RefreshDriveSpace();
    panes_->Strip()->ShowSpace();
    panes_->LayoutPanes();
}

void frmtarget::RefreshDriveSpace() {
    const auto space = platform::GetDriveSpace(platform::ProgramFolder().substr(0, kDriveRootLength));
    if (!space)
        return;
    panes_->Strip()->SetSpace(WindowText(IDS_FREE_SPACE) + QLatin1String(": "), FiguresOf(*space));
    panes_->LayoutPanes();
}

void frmtarget::Unload() {
    unloaded_ = true;
    const BusyCursor busy;
    try {
        SaveSettings();
        app::FreeExtraTextLibrary();
        app::FreeLanguageLibrary();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window != this && window->objectName().startsWith(QLatin1String("frm")))
                window->close();
        }
    } catch (const std::exception& error) {
        app::ShowErrorUnderProgramTitle(error.what());
    }
}

} // namespace ui
