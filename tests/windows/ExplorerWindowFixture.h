#pragma once

#include "app/core/ApplicationState.h"
#include "app/core/Texts.h"
#include "app/core/inifile.h"
#include "explorer/ArchiveDialogs.h"
#include "explorer/FolderTreeModel.h"
#include "explorer/frmtarget.h"
#include "fakes/FakeDesktop.h"
#include "fakes/RecordingMessages.h"
#include "platform/Process.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QTest>
#include <QToolBar>
#include <QTreeView>

#include <functional>
#include <gtest/gtest.h>

/// Archive windows that only keep what they were handed.
class RecordingDialogs : public explorer::ArchiveDialogs {
  public:
    std::vector<std::string> opened; ///< "ZIP " and so on with the archives

    void ShowZip(const std::string& archives, QWidget*) override { opened.push_back("ZIP " + archives); }

    void ShowCab(const std::string& archives, QWidget*) override { opened.push_back("CAB " + archives); }

    void ShowRar(const std::string& archives, QWidget*) override { opened.push_back("RAR " + archives); }
};

/// The main window over a drive E: of its own, driven as a user does. The program folder is the test
/// program's.
class ExplorerWindow : public testing::Test {
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
        ASSERT_EQ(app::LoadText(123), "My Computer");
    }

    void TearDown() override {
        window_.reset();
        app::FreeLanguageLibrary();
        app::FreeExtraTextLibrary();
    }

    void Open() {
        window_ = std::make_unique<explorer::frmtarget>(&dialogs_);
        window_->Load();
        window_->show();
        window_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    template <typename Control>
    Control& Get(const char* name) {
        auto* control = window_->findChild<Control*>(QLatin1String(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }

    QTreeView& Tree() { return Get<QTreeView>("TreeView"); }

    QTreeView& List() { return Get<QTreeView>("ListView"); }

    void Trigger(const char* action) { Get<QAction>(action).trigger(); }

    QModelIndex Node(const std::string& key) {
        return static_cast<explorer::FolderTreeModel*>(Tree().model())->IndexOf(key);
    }

    void ClickNode(const std::string& key) { Click(Tree(), Node(key)); }

    void DoubleClickRow(const std::string& name) {
        const QModelIndex row = Row(name);
        Click(List(), row);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(row).center());
    }

    void ClickRow(const std::string& name, Qt::KeyboardModifiers keys = {}) {
        Click(List(), Row(name), keys);
    }

    void ClickHeader(int section) {
        QHeaderView* header = List().header();
        const QPoint middle(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                            header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
    }

    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int row = 0; row < List().model()->rowCount(); ++row)
            names.push_back(List().model()->index(row, 0).data().toString().toStdString());
        return names;
    }

    QString Location() { return Get<QLabel>("lblocation").text(); }

    std::string SelectedNode() {
        const QModelIndex node = Tree().currentIndex();
        return static_cast<explorer::FolderTreeModel*>(Tree().model())->KeyOf(node);
    }

    static std::string Setting(const char* section, const char* key) {
        return app::ReadIni(section, key, "(missing)", app::SettingsFilePath());
    }

    static void SetSetting(const char* section, const char* key, const char* value) {
        app::WriteIni(section, key, value, app::SettingsFilePath());
    }

    using Texts = std::vector<std::string>;
    using Ids = std::vector<std::uint32_t>;

    tests::TestDir dir_;
    tests::ScopedVariable drives_{"PELLARION_DRIVES", std::string(::getenv("PELLARION_DRIVES")) +
                                                          ";P=fixed:" + tests::ProgramDir().string()};
    fakes::RecordingMessages messages_;
    fakes::FakeDocumentOpener opener_;
    RecordingDialogs dialogs_;
    std::unique_ptr<explorer::frmtarget> window_;

  private:
    QModelIndex Row(const std::string& name) {
        const Texts names = Names();
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end())
            throw std::runtime_error("no row " + name);
        return List().model()->index(static_cast<int>(found - names.begin()), 0);
    }

    static void Click(QTreeView& view, const QModelIndex& index, Qt::KeyboardModifiers keys = {}) {
        if (!index.isValid())
            throw std::runtime_error("nothing there to click");
        view.scrollTo(index);
        // Beside the check box, which stands at the beginning.
        const QRect place = view.visualRect(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, place.center());
    }
};
