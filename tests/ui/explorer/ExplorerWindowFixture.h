#pragma once

#include "app/IniFile.h"
#include "app/Settings.h"
#include "fakes/FakeArchiveDialogs.h"
#include "platform/Process.h"
#include "ui/WindowFixture.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/window/MainWindow.h"

#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolBar>

#include <functional>

/// The main window over a drive E: of its own, driven as a user does. The program folder is the test
/// program's.
class ExplorerWindow : public ProgramWindow {
  protected:
    void SetUp() override {
        ProgramWindow::SetUp();
        std::filesystem::remove(tests::ProgramDir() / "setting.ini");
        std::filesystem::remove(tests::ProgramDir() / "tree.dat");
        ASSERT_EQ(platform::ProgramFolder(), "P:");
        ASSERT_TRUE(app::EnsureSettingsFile());
        app::LoadExtraTextLibrary();
    }

    void TearDown() override {
        window_.reset();
        ProgramWindow::TearDown();
        app::FreeExtraTextLibrary();
    }

    void Open() {
        window_ = std::make_unique<ui::frmtarget>(&dialogs_);
        window_->Load();
        window_->show();
        window_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    QTreeView& Tree() { return Get<QTreeView>("TreeView"); }

    void Trigger(const char* action) { Get<QAction>(action).trigger(); }

    QModelIndex Node(const std::string& key) {
        return static_cast<ui::FolderTreeModel*>(Tree().model())->IndexOf(key);
    }

    void ClickNode(const std::string& key) { Click(Tree(), Node(key)); }

    Texts Names() { return Column(0); }

    QString Location() { return Get<QLabel>("lblocation").text(); }

    std::string SelectedNode() {
        const QModelIndex node = Tree().currentIndex();
        return static_cast<ui::FolderTreeModel*>(Tree().model())->KeyOf(node);
    }

    static std::string Setting(const char* section, const char* key) {
        return app::ReadIni(section, key, "(missing)", app::SettingsFilePath());
    }

    static void SetSetting(const char* section, const char* key, const char* value) {
        app::WriteIni(section, key, value, app::SettingsFilePath());
    }

    fakes::FakeArchiveDialogs dialogs_;
    std::unique_ptr<ui::frmtarget> window_;

  private:
    QWidget& Window() override { return *window_; }

    static void Click(QTreeView& view, const QModelIndex& index) {
        if (!index.isValid())
            throw std::runtime_error("nothing there to click");
        view.scrollTo(index);
        // Beside the check box, which stands at the beginning.
        const QRect place = view.visualRect(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place.center());
    }
};
