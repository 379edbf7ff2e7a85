#include "app/TextIds.h"
#include "archive/cabinet/CabFile.h"
#include "platform/Files.h"
#include "ui/ModalUser.h"
#include "ui/explorer/CommandsFixture.h"
#include "ui/explorer/commands/FileSearch.h"

#include <QTreeWidget>

namespace {

namespace fs = std::filesystem;

class CompressCommand : public CommandsWindow {
  protected:
    void CompressAll() {
        QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
        Trigger("mnuFileCompress");
    }

    /// Whether a cabinet below E: holds that file.
    bool Holds(const std::string& cabinet, const std::string& file, const std::string& content) {
        fs::remove_all(dir_.HostC() / "read");
        bool holds = false;
        cabinet::CabFile reader;
        reader.CabName = tests::TestDir::Path(cabinet);
        reader.AfterExtract = [&](const std::string& path) {
            base::SystemError error;
            holds = holds ||
                    (path.ends_with('\\' + file) && platform::ReadWholeFile(path, 100, error) == content);
        };
        reader.Extract("", "C:\\read", reader.CabName);
        return holds;
    }
};

TEST_F(CompressCommand, PacksFilesAndFoldersAndSelectsTheCabinets) {
    dir_.MakeFile("Docs/a.txt", "text");
    dir_.MakeFile("Docs/empty.txt");
    dir_.MakeFile("Docs/old.CAB", "a cabinet");
    dir_.MakeFile("Docs/photos/bay.jpg", "bay");
    dir_.MakeFile("Docs/photos/.sorted/sub/dunes.jpg", "dunes");
    dir_.MakeFile("Docs/secret.ENC", "?");
    dir_.MakeFile("Docs/z.txt", "last");
    OpenAt("E:\\Docs");
    ASSERT_TRUE(Node("E:\\Docs\\photos").isValid());
    EXPECT_FALSE(Get<QAction>("mnuFileCompress").isEnabled()) << "nothing is selected";
    CompressAll();
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_FILE_EMPTY, IDS_FILE_ENCRYPTED}))
        << "and the rows after them are still packed";
    EXPECT_EQ(messages_.shown[0].flags, app::kMessageWarning);
    EXPECT_EQ(messages_.shown[0].title, app::LoadText(IDS_WARNING_TITLE));
    EXPECT_EQ(Names(), (Texts{"a.txt.cab", "empty.txt", "old.CAB", "photos.cab", "secret.ENC", "z.txt.cab"}));
    EXPECT_EQ(SelectedNames(), (Texts{"a.txt.cab", "photos.cab", "z.txt.cab"}));
    EXPECT_EQ(dir_.Read("Docs/old.CAB"), "a cabinet");
    EXPECT_TRUE(Holds("Docs/a.txt.cab", "a.txt", "text"));
    EXPECT_TRUE(Holds("Docs/photos.cab", "bay.jpg", "bay"));
    EXPECT_TRUE(Holds("Docs/photos.cab", ".sorted\\sub\\dunes.jpg", "dunes"));
    EXPECT_FALSE(Node("E:\\Docs\\photos").isValid());
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
}

TEST_F(CompressCommand, RefusesTheSuiteAndLongPaths) {
    dir_.MakeFile("PROGRAM FILES/x", "x");
    dir_.MakeFile("StartDeck.exe", "x");
    dir_.MakeFile("tools/startdeck.exe", "x");
    dir_.MakeFile("long/" + std::string(251 - 8, 'f'), "x");
    dir_.MakeFile("long/" + std::string(252 - 8, 't'), "x");
    OpenAt("E:\\");
    ClickRow("StartDeck.exe");
    ClickRow("PROGRAM FILES", Qt::ControlModifier);
    Trigger("mnuFileCompress");
    ClickNode("E:\\PROGRAM FILES");
    CompressAll();
    ClickNode("E:\\tools");
    CompressAll();
    ClickNode("E:\\long");
    CompressAll();
    EXPECT_EQ(messages_.Ids(),
              (Ids{IDS_NEEDED_IN_PLACE, IDS_NEEDED_IN_PLACE, IDS_NEEDED_IN_PLACE, IDS_PATH_TOO_LONG}));
    EXPECT_EQ(SelectedNames(), (Texts{std::string(251 - 8, 'f') + ".cab"}));
    for (const char* left : {"PROGRAM FILES/x", "StartDeck.exe", "tools/startdeck.exe.cab"})
        EXPECT_TRUE(dir_.Exists(left)) << left;
}

TEST_F(CompressCommand, EndsAtAFolderWithoutFilesAndAtNamesThatCannotBeStored) {
    dir_.MakeFolder("Docs/a/inner");
    dir_.MakeFile("Docs/a/.hidden/file", "in a folder that the walk passes by");
    dir_.MakeFile("Docs/z.txt", "z");
    OpenAt("E:\\Docs");
    CompressAll();
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_NO_FILE_IN_FOLDER}));
    EXPECT_EQ(SelectedNames().size(), 2U) << "nothing has changed";
    if (!tests::kNamesAreBytes)
        GTEST_SKIP() << "every name here can be stored";
    dir_.MakeFile("Docs/a/why?.txt", "w");
    dir_.MakeFile("Docs/a/inner/good", "g");
    dir_.MakeFile("Docs/a/inner/bytes\xFF", "b");
    app::Application().OwnerName = "Ada";
    Texts rows;
    QString text;
    const ModalUser reader(
        {{"frmMessage", [&](QWidget& window) {
              EXPECT_EQ(window.windowTitle(), "Compress Operation Abort");
              EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
              const auto* list = window.findChild<QTreeWidget*>("ListView1");
              for (int i = 0; i < list->topLevelItemCount(); ++i)
                  rows.push_back(
                      (list->topLevelItem(i)->text(0) + ' ' + list->topLevelItem(i)->text(1)).toStdString());
              text = window.findChild<QLabel*>("lbstatus")->text() + '|' +
                     window.findChild<QLabel*>("Label1")->text();
              window.close();
          }}});
    Trigger("mnuFileCompress");
    EXPECT_EQ(rows, (Texts{"1 E:\\Docs\\a\\why?.txt", "2 E:\\Docs\\a\\inner\\bytes?"}));
    EXPECT_EQ(text.toStdString(), app::LoadText(IDS_COMPRESSING_STOPPED) + '|' +
                                      app::WithUserName(app::LoadText(IDS_UNSTORABLE_NAMES)) + '\n' +
                                      app::LoadText(IDS_RENAME_AND_REPEAT));
    EXPECT_EQ(dir_.Count("Docs"), 2U);
}

TEST_F(CompressCommand, FailureKeepsTheSourceAndGoesOn) {
    dir_.MakeFile("Docs/a/file", "f");
    if (!tests::MakeLink("file", dir_.Host("Docs/a/link")))
        GTEST_SKIP() << "no links here";
    dir_.MakeFile("Docs/b.txt", "b");
    dir_.MakeFolder("Docs/b.txt.cab"); // what is to be made cannot be
    dir_.MakeFile("Docs/c.txt", "c");
    OpenAt("E:\\Docs");
    ClickRow("a");
    ClickRow("b.txt", Qt::ControlModifier);
    ClickRow("c.txt", Qt::ControlModifier);
    Trigger("mnuFileCompress");
    ASSERT_EQ(messages_.Ids(), (Ids{IDS_CAB_NOT_MADE})) << "nothing is said of a file";
    EXPECT_EQ(messages_.shown[0].flags, app::kMessageError);
    EXPECT_EQ(messages_.shown[0].title, app::LoadText(IDS_ERROR_TITLE));
    EXPECT_EQ(messages_.shown[0].text, app::LoadText(IDS_CAB_NOT_MADE) +
                                           " 'E:\\Docs\\a'.\n\nE:\\Docs\\a\\link\n" +
                                           app::LoadText(IDS_PACK_LINK));
    EXPECT_EQ(Names(), (Texts{"a", "b.txt.cab", "b.txt", "c.txt.cab"}));
    EXPECT_EQ(SelectedNames(), (Texts{"b.txt.cab", "c.txt.cab"}));
    EXPECT_TRUE(dir_.Exists("Docs/a/link"));
}

TEST_F(CompressCommand, EscapeAndClosingTheProgramStopIt) {
    const std::string content(40'000'000, 'x');
    dir_.MakeFile("Docs/a/large", content);
    dir_.MakeFile("Docs/b.txt", "b");
    app::Application().OwnerName = "Ada";
    OpenAt("E:\\Docs");
    const auto expectUntouched = [&] {
        EXPECT_EQ(dir_.Count("Docs"), 2U);
        EXPECT_EQ(dir_.Count("Docs/a"), 1U);
        EXPECT_TRUE(dir_.Read("Docs/a/large") == content);
        EXPECT_TRUE(messages_.shown.empty());
    };
    const ModalUser stopper({{"frmMsgCompress", [&](QWidget& notice) {
                                  EXPECT_EQ(notice.windowTitle(), "Compress");
                                  EXPECT_EQ(notice.findChild<QLabel*>("Label1")->text().toStdString(),
                                            app::WithUserName(app::LoadText(IDS_COMPRESSING)));
                                  EXPECT_EQ(notice.findChild<QLabel*>("path")->text(), "large");
                                  Trigger("mnuFileCompress"); // does nothing while it runs
                                  QTest::keyClick(&notice, Qt::Key_Escape);
                                  EXPECT_EQ(notice.findChild<QLabel*>("figures")->text().toStdString(),
                                            app::LoadText(IDS_STOPPING));
                              }}});
    CompressAll();
    expectUntouched();
    const ModalUser closer({{"frmMsgCompress", [&](QWidget&) { window_->close(); }}});
    CompressAll();
    expectUntouched();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window_->isVisible(); }));
}

TEST(FindFilesClass, CollectsDepthFirstAndCountsOn) {
    const tests::TestDir dir;
    dir.MakeFile("f/1");
    if constexpr (tests::kNamesAreBytes)
        dir.MakeFile("f/ends.");
    dir.MakeFile("f/.2");
    dir.MakeFile("f/.git/3");
    dir.MakeFile("f/sub/deep/4");
    dir.MakeFile("f/sub/5");
    ui::clsFindFiles finder;
    std::vector<std::string> found{"left alone"};
    finder.Directory = "E:\\none\\";
    finder.StartSearchFile(found);
    EXPECT_EQ(found, (std::vector<std::string>{"left alone"}));
    finder.Directory = "E:\\f\\";
    finder.StartSearchFile(found);
    std::ranges::sort(found.begin(), found.begin() + 2);
    EXPECT_EQ(found,
              (std::vector<std::string>{"E:\\f\\.2", "E:\\f\\1", "E:\\f\\sub\\5", "E:\\f\\sub\\deep\\4"}));
    EXPECT_EQ(finder.DirectoryCount(), 2);
    finder.StartSearchFile(found);
    EXPECT_EQ(finder.FileCount(), 8);
}

} // namespace
