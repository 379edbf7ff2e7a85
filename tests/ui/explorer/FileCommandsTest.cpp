#include "app/TextIds.h"
#include "platform/DropFiles.h"
#include "ui/explorer/CommandsFixture.h"
#include "ui/explorer/list/FileListModel.h"

#include <QUrl>

namespace {

namespace fs = std::filesystem;

class FileCommands : public CommandsWindow {
  protected:
    std::string AddressOf(const char* relative) const {
        return QUrl::fromLocalFile(QString::fromStdString(dir_.Host(relative).string()))
            .toEncoded()
            .toStdString();
    }
};

using namespace std::string_literals;

TEST_F(FileCommands, CopyPutsTheListIntoEveryForm) {
    dir_.MakeFile("Docs/a b.txt");
    dir_.MakeFile("Docs/c.txt");
    OpenAt("E:\\Docs");
    ClickRow("a b.txt");
    ClickRow("c.txt", Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard_.Bytes(ui::kDropFilesMimeType),
              "\x14"s + std::string(19, '\0') + "E:\\Docs\\a b.txt\0E:\\Docs\\c.txt\0\0"s);
    const std::string first = AddressOf("Docs/a b.txt");
    const std::string second = AddressOf("Docs/c.txt");
    EXPECT_EQ(clipboard_.Bytes("text/uri-list"), first + "\r\n" + second + "\r\n");
    EXPECT_EQ(clipboard_.Bytes("x-special/gnome-copied-files"), "copy\n" + first + "\n" + second);
    EXPECT_EQ(clipboard_.Bytes("application/x-kde-cutselection"), "0");
    EXPECT_EQ(SelectedNames(), (Texts{"a b.txt", "c.txt"}));
    EXPECT_TRUE(messages_.shown.empty());
    clipboard_.isReachable = false;
    Trigger("mnuFileCopy");
    ASSERT_EQ(messages_.Ids(), (Ids{IDS_NOT_ON_CLIPBOARD}));
    EXPECT_EQ(messages_.shown[0].flags, app::kMessageError);
    EXPECT_EQ(messages_.shown[0].title, "Error");
}

TEST_F(FileCommands, PasteTakesTheListsOfOtherPrograms) {
    dir_.MakeFile("from/a b.txt", "a");
    dir_.MakeFile("from/c/d.txt", "d");
    dir_.MakeFolder("to");
    const QByteArray uris = QByteArray::fromStdString(AddressOf("from"));
    OpenAt("E:\\to");
    for (const auto& [format, bytes] :
         {std::pair<const char*, QByteArray>{
              "text/uri-list", uris + "/a%20b.txt\r\nhttps://pellarion.example/x\r\n" + uris + "/c\r\n"},
          {"x-special/gnome-copied-files", "cut\n" + uris + "/a%20b.txt\n" + uris + "/c"}}) {
        clipboard_.Hold(format, bytes);
        QTest::keyClick(&Tree(), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(dir_.Read("to/a b.txt"), "a") << format;
        EXPECT_EQ(dir_.Read("to/c/d.txt"), "d") << format;
        EXPECT_EQ(Names(), (Texts{"c", "a b.txt"}));
        EXPECT_EQ(SelectedNames(), Names());
        EXPECT_TRUE(dir_.Exists("from/a b.txt")) << "never a move";
        fs::remove_all(dir_.Host("to/c"));
        fs::remove(dir_.Host("to/a b.txt"));
    }
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(FileCommands, PasteReplacesAndReportsWhatCannotBe) {
    dir_.MakeFile("from/a", "new");
    dir_.MakeFile("to/a", "old");
    dir_.MakeFolder("to/inner");
    OpenAt("E:\\to\\inner");
    ASSERT_TRUE(ui::ClipboardCopyFiles({"E:\\to", "E:\\gone", "E:\\from\\a"}));
    QTest::keyClick(&List(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(dir_.Read("to/inner/a"), "new");
    EXPECT_FALSE(dir_.Exists("to/inner/to"));
    ASSERT_EQ(messages_.Ids(), (Ids{IDS_NOT_ALL_COPIED}));
    EXPECT_NE(messages_.shown[0].text.find("E:\\to\nA folder cannot be copied into itself"),
              std::string::npos);
    EXPECT_NE(messages_.shown[0].text.find("E:\\gone\nThe system cannot find the file"), std::string::npos);
    EXPECT_EQ(SelectedNames(), (Texts{"a"}));
    // Onto itself.
    ASSERT_TRUE(ui::ClipboardCopyFiles({"E:\\to\\inner\\a"}));
    QTest::keyClick(&List(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(dir_.Read("to/inner/a"), "new");
    EXPECT_EQ(dir_.Count("to/inner"), 1U);
    EXPECT_EQ(messages_.shown.size(), 1U);
}

TEST_F(FileCommands, PasteWithoutAListOrWithADamagedOne) {
    dir_.MakeFile("to/a");
    OpenAt("E:\\to");
    ClickRow("a");
    QTest::keyClick(&List(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames(), Texts{});
    EXPECT_FALSE(Get<QAction>("mnuFilePaste").isEnabled());
    clipboard_.Hold(ui::kDropFilesMimeType, QByteArray("\xFF\xFF\xFF\xFF", 4) + QByteArray(30, '\0'));
    QTest::keyClick(&List(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Names(), (Texts{"a"}));
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(FileCommands, DeleteAsksAndTakesFoldersOutOfTheTree) {
    dir_.MakeFile("Docs/a.txt");
    dir_.MakeFile("Docs/keep.txt");
    dir_.MakeFile("Docs/Work/deep/b.txt");
    OpenAt("E:\\Docs");
    ASSERT_TRUE(Node("E:\\Docs\\Work").isValid());
    ClickRow("Work");
    ClickRow("a.txt", Qt::ControlModifier);
    Answer(app::kAnswerNo);
    Trigger("mnuFileDel");
    EXPECT_TRUE(dir_.Exists("Docs/a.txt"));
    EXPECT_EQ(messages_.shown[0].text, app::LoadText(IDS_ASK_DELETE_FILES) + "\r\n");
    EXPECT_EQ(messages_.shown[0].title, app::LoadText(IDS_DELETE_TITLE));
    EXPECT_EQ(messages_.shown[0].flags, app::kMessageQuestion);
    Trigger("mnuFileDel");
    EXPECT_EQ(Names(), (Texts{"keep.txt"}));
    EXPECT_FALSE(dir_.Exists("Docs/Work"));
    EXPECT_FALSE(Node("E:\\Docs\\Work").isValid());
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
    EXPECT_FALSE(Get<QAction>("mnuFileDel").isEnabled()) << "nothing is selected";
}

TEST_F(FileCommands, DeleteKeyStaysInTheList) {
    for (const char* name : {"a", "b", "c"})
        dir_.MakeFile(std::string("Docs/") + name);
    OpenAt("E:\\Docs");
    ClickRow("b");
    QTest::keyClick(&List(), Qt::Key_Delete);
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_EQ(messages_.shown[0].text, app::LoadText(IDS_ASK_DELETE_FILES));
    EXPECT_EQ(Names(), (Texts{"a", "c"}));
    EXPECT_EQ(List().currentIndex().row(), 1);
    // A file that has vanished meanwhile is told.
    ClickRow("c");
    fs::remove(dir_.Host("Docs/c"));
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_ASK_DELETE_FILES, IDS_ASK_DELETE_FILES, IDS_NOT_ALL_DELETED}));
    EXPECT_NE(messages_.shown[2].text.find("E:\\Docs\\c\n"), std::string::npos);
    EXPECT_EQ(Names(), (Texts{"a"}));
}

TEST_F(FileCommands, RenameInPlace) {
    dir_.MakeFile("Docs/note.old.txt", "n");
    dir_.MakeFile("Docs/taken.txt", "t");
    OpenAt("E:\\Docs");
    ClickRow("note.old.txt");
    QTest::keyClick(&List(), Qt::Key_F2);
    auto* editor = List().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->selectedText(), "note.old");
    TypeName(List(), "zebra.cab");
    EXPECT_EQ(Names(), (Texts{"taken.txt", "zebra.cab"}));
    EXPECT_EQ(SelectedNames(), (Texts{"zebra.cab"}));
    EXPECT_EQ(dir_.Read("Docs/zebra.cab"), "n");
    EXPECT_TRUE(static_cast<ui::FileListModel*>(List().model())->IsConsistent());
    Trigger("nmuFileRename");
    TypeName(List(), "TAKEN.txt");
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_NOT_RENAMED}));
    EXPECT_EQ(Names(), (Texts{"taken.txt", "zebra.cab"}));
    EXPECT_EQ(dir_.Read("Docs/taken.txt"), "t");
}

TEST_F(FileCommands, RenamingAFolderRenamesItsNode) {
    dir_.MakeFile("Docs/Work/a");
    dir_.MakeFile("Docs/Work.d");
    OpenAt("E:\\Docs");
    ClickRow("Work");
    QTest::keyClick(&List(), Qt::Key_F2);
    TypeName(List(), "Play");
    EXPECT_TRUE(dir_.Exists("Docs/Play/a"));
    EXPECT_FALSE(Node("E:\\Docs\\Work").isValid());
    EXPECT_TRUE(Node("E:\\Docs\\Play").isValid());
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
    EXPECT_EQ(SelectedNames(), (Texts{"Play"}));
}

TEST_F(FileCommands, NewFolder) {
    dir_.MakeFile("Docs/Taken/inner");
    OpenAt("E:\\Docs");
    app::Application().OwnerName = "Ada";
    Trigger("mnuNewFolder");
    ASSERT_EQ(messages_.asked.size(), 1U);
    EXPECT_EQ(messages_.asked[0].caption, "New folder");
    EXPECT_EQ(messages_.asked[0].prompt, "What shall the new folder be called, Ada?");
    for (const char* name : {"Fresh", "Taken", "..", "a\\b", ""}) {
        messages_.replies.push_back(name);
        Trigger("mnuFolderNew");
    }
    EXPECT_EQ(Names(), (Texts{"Fresh", "Taken"}));
    EXPECT_TRUE(Node("E:\\Docs\\Fresh").isValid());
    EXPECT_EQ(dir_.Count("Docs"), 2U);
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(FileCommands, AtTheRootTheDesktopIsTheFolder) {
    if (tests::kIsWindows)
        GTEST_SKIP() << "where the desktop lies is the system's";
    fs::create_directories(dir_.HostC() / "desk");
    const tests::ScopedVariable config("XDG_CONFIG_HOME", dir_.HostC().string());
    const tests::ScopedVariable home("HOME", dir_.HostC().string());
    std::ofstream(dir_.HostC() / "user-dirs.dirs") << "XDG_DESKTOP_DIR=\"$HOME/desk\"\n";
    dir_.MakeFile("a.txt", "a");
    ASSERT_TRUE(ui::ClipboardCopyFiles({"E:\\a.txt"}));
    Open();
    Trigger("mnuFilePaste");
    EXPECT_TRUE(fs::exists(dir_.HostC() / "desk/a.txt"));
    messages_.replies.push_back("Made");
    Trigger("mnuFolderNew");
    EXPECT_TRUE(fs::exists(dir_.HostC() / "desk/Made"));
    Trigger("mnuFolderProperties");
    EXPECT_EQ(properties_.shown, (Texts{"C:\\desk\\"}));
}

TEST_F(FileCommands, PropertiesAndTheirFailures) {
    dir_.MakeFile("Docs/a.txt");
    OpenAt("E:\\Docs");
    ClickRow("a.txt");
    Trigger("mnuFileProperties");
    Trigger("mnuFolderProperties");
    EXPECT_EQ(properties_.shown, (Texts{"E:\\Docs\\a.txt", "E:\\Docs"}));
    properties_.result = 32;
    Trigger("mnuFileProperties");
    Trigger("mnuFolderProperties");
    ASSERT_EQ(messages_.Ids(), (Ids{IDS_NO_PROPERTIES, IDS_NO_PROPERTIES}));
    EXPECT_EQ(messages_.shown[0].flags, app::kMessageError);
    EXPECT_EQ(messages_.shown[1].flags, app::kMessageQuestion);
}

TEST_F(FileCommands, WithoutASelectionNothingIsAsked) {
    dir_.MakeFile("Docs/a.txt");
    OpenAt("E:\\Docs");
    QTest::keyClick(&List(), Qt::Key_Delete);
    QTest::keyClick(&List(), Qt::Key_F2);
    QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(messages_.shown.empty());
    EXPECT_EQ(clipboard_.held, nullptr);
    EXPECT_EQ(List().viewport()->findChild<QLineEdit*>(), nullptr);
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames(), (Texts{"a.txt"}));
    EXPECT_TRUE(Get<QAction>("mnuFileCopy").isEnabled());
}

} // namespace
