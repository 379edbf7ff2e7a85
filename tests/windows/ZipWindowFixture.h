#pragma once

#include "app/core/ApplicationState.h"
#include "app/core/Texts.h"
#include "dialogs/frmWinExtract.h"
#include "fakes/FakeDesktop.h"
#include "fakes/RecordingMessages.h"
#include "support/TestDir.h"
#include "support/ZipFiles.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include <functional>
#include <gtest/gtest.h>

/// Messages that let a test act in the middle of an extraction: while a password is asked for.
class MessagesInMidWork : public fakes::RecordingMessages {
  public:
    std::function<void()> onAsk;

    std::optional<std::string> Ask(const std::string& prompt, const std::string& caption,
                                   bool hidden) override {
        if (onAsk)
            onAsk();
        return RecordingMessages::Ask(prompt, caption, hidden);
    }
};

/// A ZIP window on an archive on drive E:, driven as a user does.
class ZipWindow : public testing::Test {
  protected:
    void SetUp() override {
        app::Application() = {};
        app::Application().LanguageId = "0409";
        app::Application().CharsetCode = "0";
        app::LoadLanguageLibrary();
        ASSERT_FALSE(app::LoadText(308).empty());
    }

    void TearDown() override {
        window_.reset();
        app::FreeLanguageLibrary();
    }

    /// Opens the window on `archive`, a path on E: with forward slashes.
    void Open(const std::string& archive) {
        window_ = std::make_unique<dialogs::frmWinExtract>();
        window_->CurrentArchive = tests::TestDir::Path(archive);
        window_->ListArchive();
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }

    template <typename Control>
    Control& Get(const char* name) {
        auto* control = window_->findChild<Control*>(QLatin1String(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }

    QTreeView& List() { return Get<QTreeView>("ListView"); }

    void Press(const char* button) { QTest::mouseClick(&Get<QPushButton>(button), Qt::LeftButton); }

    void Check(const char* box) { Get<QCheckBox>(box).click(); }

    void ClickHeader(int section) {
        QHeaderView* header = List().header();
        const QPoint middle(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                            header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
    }

    /// Clicks the row of an entry, found by the text of its first column without the prefix.
    void ClickRow(const std::string& name, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, keys, MiddleOf(name));
    }

    void DoubleClickRow(const std::string& name) {
        ClickRow(name);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, MiddleOf(name));
    }

    QPoint MiddleOf(const std::string& name) {
        const std::vector<std::string> names = Column(0);
        for (std::size_t row = 0; row < names.size(); ++row)
            if (names[row].substr(1) == name) {
                const QModelIndex index = List().model()->index(static_cast<int>(row), 0);
                List().scrollTo(index);
                return List().visualRect(index).center();
            }
        throw std::runtime_error("no row " + name);
    }

    std::vector<std::string> Column(int column) {
        std::vector<std::string> texts;
        for (int row = 0; row < List().model()->rowCount(); ++row)
            texts.push_back(List().model()->index(row, column).data().toString().toStdString());
        return texts;
    }

    std::vector<std::string> SelectedNames() {
        std::vector<std::string> names;
        for (int row = 0; row < List().model()->rowCount(); ++row)
            if (List().selectionModel()->isRowSelected(row))
                names.push_back(Column(0)[static_cast<std::size_t>(row)].substr(1));
        return names;
    }

    QString Percentage() { return Get<QLabel>("lblProBar").text(); }

    bool Exists(const std::string& relative) { return std::filesystem::exists(dir_.Host(relative)); }

    static bool ExtractionDone() { return app::Application().ExtractionDone; }

    using Ids = std::vector<std::uint32_t>;

    tests::TestDir dir_;
    // The text library lies beside the test program.
    tests::ScopedVariable drives_{"PELLARION_DRIVES",
                                  std::string(::getenv("PELLARION_DRIVES")) + ";P=fixed:" TEST_PROGRAM_DIR};
    MessagesInMidWork messages_;
    fakes::FakeFolderPicker picker_;
    fakes::FakeDocumentOpener opener_;
    std::unique_ptr<dialogs::frmWinExtract> window_;
};
