#include "app/TextIds.h"
#include "ui/explorer/CommandsFixture.h"

namespace {

namespace fs = std::filesystem;
using FolderCommands = CommandsWindow;

TEST_F(FolderCommands, DeleteShowsTheFolderAbove) {
    dir_.MakeFile("Docs/Work/a");
    dir_.MakeFile("Docs/b");
    OpenAt("E:\\Docs\\Work");
    Answer(app::kAnswerNo);
    Trigger("mnuFolderDel");
    EXPECT_TRUE(dir_.Exists("Docs/Work"));
    Trigger("mnuFolderDel");
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_ASK_DELETE_FOLDER, IDS_ASK_DELETE_FOLDER}));
    EXPECT_EQ(messages_.shown[1].title, app::LoadText(IDS_DELETE_TITLE));
    EXPECT_FALSE(dir_.Exists("Docs/Work"));
    EXPECT_FALSE(Node("E:\\Docs\\Work").isValid());
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
    EXPECT_EQ(Names(), (Texts{"b"}));
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_FALSE(dir_.Exists("Docs"));
    EXPECT_EQ(SelectedNode(), "E:\\");
}

TEST_F(FolderCommands, DrivesAndTheRootAreProtected) {
    dir_.MakeFile("a");
    OpenAt("E:\\");
    Trigger("mnuFolderDel");
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    Trigger("nmuFolderRename");
    ClickNode(std::string(ui::kRootKey));
    QTest::keyClick(&Tree(), Qt::Key_F2);
    ASSERT_EQ(messages_.Ids(), (Ids{IDS_DELETING, IDS_DELETING, IDS_RENAMING, IDS_RENAMING}));
    EXPECT_EQ(messages_.shown[0].text,
              app::LoadText(IDS_DELETING) + " \"E:\\\" " + app::LoadText(IDS_CHANGE_NOT_POSSIBLE));
    EXPECT_EQ(messages_.shown[3].text,
              app::LoadText(IDS_RENAMING) + " \"My Computer\" " + app::LoadText(IDS_CHANGE_NOT_POSSIBLE));
    for (const app::Message& message : messages_.shown) {
        EXPECT_EQ(message.title, "Warning");
        EXPECT_EQ(message.flags, app::kMessageWarning);
    }
    EXPECT_TRUE(dir_.Exists("a"));
    EXPECT_EQ(Tree().viewport()->findChild<QLineEdit*>(), nullptr);
}

TEST_F(FolderCommands, DeletingWhatHasVanishedIsTold) {
    dir_.MakeFile("Docs/Work/a");
    OpenAt("E:\\Docs\\Work");
    fs::remove_all(dir_.Host("Docs/Work"));
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_ASK_DELETE_FOLDER, IDS_NOT_ALL_DELETED}));
    EXPECT_TRUE(Node("E:\\Docs\\Work").isValid()) << "the next click removes it";
    Trigger("mnuFolderDel");
    EXPECT_FALSE(Node("E:\\Docs\\Work").isValid());
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
}

TEST_F(FolderCommands, RenameSortsSelectsAndShows) {
    dir_.MakeFile("Docs/a");
    dir_.MakeFolder("Music");
    dir_.MakeFile("taken");
    OpenAt("E:\\Docs");
    QTest::keyClick(&Tree(), Qt::Key_F2);
    TypeName(Tree(), "Zebra");
    EXPECT_TRUE(dir_.Exists("Zebra/a"));
    EXPECT_EQ(SelectedNode(), "E:\\Zebra");
    EXPECT_EQ(Node("E:\\Zebra").row(), 1);
    EXPECT_EQ(Location(), "E:\\Zebra");
    EXPECT_EQ(Names(), (Texts{"a"}));
    Trigger("nmuFolderRename");
    TypeName(Tree(), "Taken");
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_NOT_RENAMED}));
    EXPECT_NE(messages_.shown[0].text.find("E:\\Zebra\nA file or folder of that name"), std::string::npos);
    EXPECT_EQ(SelectedNode(), "E:\\Zebra");
    Trigger("nmuFolderRename");
    TypeName(Tree(), "in/valid");
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_NOT_RENAMED, IDS_NOT_RENAMED}));
    EXPECT_TRUE(dir_.Exists("Zebra"));
}

TEST_F(FolderCommands, RenamingAMarkedFolderAsksFirst) {
    dir_.MakeFolder("Docs");
    app::Application().OwnerName = "Ada";
    OpenAt("E:\\Docs");
    Tree().model()->setData(Node("E:\\Docs"), Qt::Checked, Qt::CheckStateRole);
    Answer(app::kAnswerNo);
    QTest::keyClick(&Tree(), Qt::Key_F2);
    TypeName(Tree(), "Other");
    EXPECT_TRUE(dir_.Exists("Docs"));
    ASSERT_EQ(messages_.Ids(), (Ids{IDS_ASK_RENAME_MARKED}));
    EXPECT_EQ(messages_.shown[0].title, app::LoadText(IDS_RENAME_FOLDER));
    EXPECT_EQ(messages_.shown[0].text.substr(0, 4), "Ada,");
    QTest::keyClick(&Tree(), Qt::Key_F2);
    TypeName(Tree(), "Other");
    EXPECT_TRUE(dir_.Exists("Other"));
    EXPECT_EQ(Node("E:\\Other").data(Qt::CheckStateRole).toInt(), Qt::Unchecked)
        << "the mark keeps the old name";
}

} // namespace
