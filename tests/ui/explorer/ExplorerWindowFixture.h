#pragma once

#include "app/ApplicationState.h"
#include "app/IniFile.h"
#include "app/Settings.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "fakes/FakeDesktop.h"
#include "fakes/RecordingMessages.h"
#include "platform/Process.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"
#include "ui/ListDriver.h"
#include "ui/explorer/commands/ArchiveDialogs.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/window/MainWindow.h"

#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolBar>

#include <functional>
#include <gtest/gtest.h>

/// Archive windows that only keep what they were handed.
class RecordingDialogs : public ui::ArchiveDialogs {
  public:
    std::vector<std::string> opened; ///< "ZIP " and so on with the archives

    void ShowZip(const std::string& archives, QWidget*) override { opened.push_back("ZIP " + archives); }

    void ShowCab(const std::string& archives, QWidget*) override { opened.push_back("CAB " + archives); }

    void ShowRar(const std::string& archives, QWidget*) override { opened.push_back("RAR " + archives); }
};

/// The main window over a drive E: of its own, driven as a user does. The program folder is the test
/// program's.
class ExplorerWindow : public testing::Test, public ListDriver {
  protected:
    void SetUp() override {
        app::Application() = {};
        app::Application().LanguageId = "0409";
        app::Application().CharsetCode = "0";
        std::filesystem::remove(tests::ProgramDir() / "setting.ini");
        std::filesystem::remove(tests::ProgramDir() / "tree.dat");
        ASSERT_EQ(platform::ProgramFolder(), "P:");
        ASSERT_TRUE(app::EnsureSettingsFile());
        app::LoadExtraTextLibrary();
        app::LoadLanguageLibrary();
        ASSERT_EQ(app::LoadText(IDS_MY_COMPUTER), "My Computer");
    }

    void TearDown() override {
        window_.reset();
        app::FreeLanguageLibrary();
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

    using Ids = std::vector<std::uint32_t>;

    tests::TestDir dir_;
    tests::ScopedVariable drives_{"PELLARION_DRIVES", std::string(::getenv("PELLARION_DRIVES")) +
                                                          ";P=fixed:" + tests::ProgramDir().string()};
    fakes::RecordingMessages messages_;
    fakes::FakeDocumentOpener opener_;
    RecordingDialogs dialogs_;
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
