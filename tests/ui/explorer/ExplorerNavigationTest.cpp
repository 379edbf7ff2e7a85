#include "app/TextIds.h"
#include "ui/explorer/ExplorerWindowFixture.h"

#include <QTimer>

namespace {

class ExplorerNavigation : public ExplorerWindow {
  protected:
    void SetUp() override {
        ExplorerWindow::SetUp();
        dir_.MakeFile("Docs/Work/plan.txt", "plan");
        dir_.MakeFile("Docs/letter.txt", "letter");
        dir_.MakeFile("Docs/disk1.CAB", "no cabinet");
        dir_.MakeFolder("Music");
        Open();
    }

    static std::string CurrentPath() { return app::Application().CurrentPath; }
};

} // namespace

TEST_F(ExplorerNavigation, StartsWithTheRemovableDrivesAndTheDesktopAsCurrentFolder) {
    EXPECT_TRUE(Node("E:\\").isValid());
    EXPECT_FALSE(Node("C:\\").isValid());
    EXPECT_TRUE(Names().empty());
    EXPECT_EQ(app::Application().CurrentNodeKey, "noderoot");
    EXPECT_TRUE(CurrentPath().ends_with('\\'));
    EXPECT_EQ(messages_.Ids(), platform::IsNTAdmin() ? Ids{} : Ids{IDS_EXTRA_NOT_ADMINISTRATOR});
}

TEST_F(ExplorerNavigation, AClickListsTheFolderAndItsSubfolders) {
    ClickNode("E:\\");
    EXPECT_EQ(Names(), (Texts{"Docs", "Music"}));
    EXPECT_EQ(Location(), "E:\\");
    EXPECT_EQ(CurrentPath(), "E:\\");
    ClickNode("E:\\Docs");
    ClickNode("E:\\Docs");
    EXPECT_EQ(Names(), (Texts{"Work", "disk1.CAB", "letter.txt"}));
    EXPECT_EQ(Location(), "E:\\Docs");
    EXPECT_EQ(CurrentPath(), "E:\\Docs\\");
    EXPECT_EQ(app::Application().CurrentNodeKey, "E:\\Docs");
    EXPECT_EQ(Tree().model()->rowCount(Node("E:\\Docs")), 1);
    EXPECT_TRUE(Tree().isExpanded(Node("E:\\Docs")));
    EXPECT_TRUE(Tree().hasFocus());
}

TEST_F(ExplorerNavigation, DoubleClickAndEnterOpenFoldersFilesAndCabinets) {
    ClickNode("E:\\");
    DoubleClickRow("Docs");
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
    DoubleClickRow("letter.txt");
    EXPECT_EQ(opener_.opened, Texts{"E:\\Docs\\letter.txt"});
    DoubleClickRow("disk1.CAB");
    EXPECT_EQ(dialogs_.shown, Texts{"CAB E:\\Docs\\disk1.CAB\r\n"});
    ClickRow("Work");
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(Location(), "E:\\Docs\\Work");
    EXPECT_EQ(Names(), Texts{"plan.txt"});
}

TEST_F(ExplorerNavigation, OpenTakesAllSelectedRowsAndExtractReachesTheArchives) {
    dir_.MakeFile("Docs/set.rar", "no archive");
    ClickNode("E:\\");
    ClickNode("E:\\Docs");
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(window_->SelectedPaths().size(), 4U);
    Trigger("mnuFileOpen");
    EXPECT_EQ(opener_.opened, (Texts{"E:\\Docs\\Work", "E:\\Docs\\letter.txt", "E:\\Docs\\set.rar"}));
    EXPECT_EQ(dialogs_.shown, Texts{"CAB E:\\Docs\\disk1.CAB\r\n"});
    ClickRow("set.rar");
    Trigger("mnuFileExtract");
    EXPECT_EQ(dialogs_.shown.back(), "RAR E:\\Docs\\set.rar\r\n");
    EXPECT_EQ(window_->SelectedPaths(), Texts{"E:\\Docs\\set.rar"});
}

TEST_F(ExplorerNavigation, UpGoesToTheFolderAboveAndStopsAtTheRoot) {
    ClickNode("E:\\");
    ClickNode("E:\\Docs");
    Trigger("up");
    EXPECT_EQ(Location(), "E:\\");
    Trigger("up");
    EXPECT_EQ(Location(), "My Computer");
    EXPECT_TRUE(Names().empty());
    EXPECT_EQ(CurrentPath(), "");
    Trigger("up");
    EXPECT_EQ(SelectedNode(), "noderoot");
}

TEST_F(ExplorerNavigation, ArrowKeysListWithoutExpandingAndEnterExpands) {
    ClickNode("E:\\");
    QTest::keyClick(&Tree(), Qt::Key_Down);
    EXPECT_EQ(Location(), "E:\\Docs");
    EXPECT_FALSE(Tree().isExpanded(Node("E:\\Docs")));
    QTest::keyClick(&Tree(), Qt::Key_Down);
    EXPECT_EQ(Location(), "E:\\Music");
    QTest::keyClick(&Tree(), Qt::Key_Up);
    QTest::keyClick(&Tree(), Qt::Key_Return);
    EXPECT_TRUE(Tree().isExpanded(Node("E:\\Docs")));
}

TEST_F(ExplorerNavigation, RefreshFindsWhatIsNewAndTheRootFindsNewDrives) {
    ClickNode("E:\\");
    dir_.MakeFolder("New");
    QTest::keyClick(&Tree(), Qt::Key_F5);
    EXPECT_EQ(Names(), (Texts{"Docs", "Music", "New"}));
    EXPECT_TRUE(Node("E:\\New").isValid());

    const tests::ScopedVariable more("PELLARION_DRIVES", std::string(::getenv("PELLARION_DRIVES")) +
                                                             ";F=removable:" + dir_.Host("Music").string());
    EXPECT_FALSE(Node("F:\\").isValid());
    ClickNode("noderoot");
    EXPECT_TRUE(Node("F:\\").isValid());
}

TEST_F(ExplorerNavigation, AVanishedFolderLeavesTheTreeAndTheCurrentFolderStays) {
    ClickNode("E:\\");
    ClickNode("E:\\Docs");
    std::filesystem::remove_all(dir_.Host("Music"));
    ClickNode("E:\\Music");
    EXPECT_FALSE(Node("E:\\Music").isValid());
    EXPECT_TRUE(Names().empty());
    EXPECT_EQ(CurrentPath(), "E:\\Docs\\");
    EXPECT_TRUE(messages_.shown.empty());
    EXPECT_TRUE(Tree().hasFocus());
}

TEST_F(ExplorerNavigation, ADriveThatWasTakenOutIsReported) {
    ClickNode("E:\\");
    std::filesystem::rename(dir_.Host(), dir_.HostC() / "taken");
    ClickNode("E:\\Docs");
    EXPECT_EQ(messages_.Ids(), Ids{IDS_FOLDER_NOT_REACHED});
    EXPECT_EQ(messages_.shown[0].title, app::LoadText(IDS_WARNING_TITLE));
    EXPECT_TRUE(Names().empty());
    EXPECT_EQ(CurrentPath(), "E:\\");
    std::filesystem::rename(dir_.HostC() / "taken", dir_.Host());
    ClickNode("E:\\Docs");
    EXPECT_EQ(Names().size(), 3U);
}

TEST_F(ExplorerNavigation, HeaderClicksSortAndTurnTheOrderRound) {
    dir_.MakeFile("a.txt", "22");
    dir_.MakeFile("B.txt", "1");
    ClickNode("E:\\");
    ClickHeader(2);
    EXPECT_EQ(Names(), (Texts{"Docs", "Music", "B.txt", "a.txt"}));
    ClickHeader(2);
    EXPECT_EQ(Names(), (Texts{"a.txt", "B.txt", "Docs", "Music"}));
    ClickHeader(0);
    EXPECT_EQ(Names(), (Texts{"Docs", "Music", "a.txt", "B.txt"}))
        << "folders first, and without regard to case";
    ClickHeader(0);
    ClickNode("E:\\");
    EXPECT_EQ(Names(), (Texts{"B.txt", "a.txt", "Music", "Docs"})) << "the order stays";
}

TEST_F(ExplorerNavigation, CheckedFoldersAreMarkedInTheListOfMarks) {
    const auto clickBox = [this](const std::string& key) {
        const QRect place = Tree().visualRect(Node(key));
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                          QPoint(place.left() + 8, place.center().y()));
    };
    const auto marks = [] {
        std::ifstream file(tests::ProgramDir() / "tree.dat", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    ClickNode("E:\\");
    clickBox("E:\\Docs");
    EXPECT_EQ(marks(), "\\Docs\r\n");
    EXPECT_EQ(SelectedNode(), "E:\\Docs");
    EXPECT_EQ(Location(), "E:\\"); // marking does not list
    clickBox("E:\\Docs");
    EXPECT_EQ(marks(), "");
    clickBox("noderoot");
    EXPECT_TRUE(QTest::qWaitFor([this] { return messages_.Ids() == Ids{IDS_MARKING}; }));
    EXPECT_EQ(marks(), "");
}

TEST_F(ExplorerNavigation, AClickDuringAListingFollowsItAndClosingEndsIt) {
    for (int i = 0; i < 3000; ++i)
        dir_.MakeFile("Many/file" + std::to_string(i));
    ClickNode("E:\\");
    // Comes while "Many" is being listed: the listing lets messages run before it starts.
    QTimer::singleShot(0, window_.get(), [this] { ClickNode("E:\\Docs"); });
    ClickNode("E:\\Many");
    EXPECT_EQ(Location(), "E:\\Docs");
    EXPECT_EQ(Names(), (Texts{"Work", "disk1.CAB", "letter.txt"}));
    EXPECT_EQ(SelectedNode(), "E:\\Docs");

    QTimer::singleShot(0, window_.get(), [this] { window_->close(); });
    ClickNode("E:\\Many");
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}
