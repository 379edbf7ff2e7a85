#include "app/TextIds.h"
#include "base/Letters.h"
#include "fakes/RecordingMessages.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"
#include "ui/common/FolderPickerDialog.h"
#include "ui/common/ShellDelete.h"
#include "ui/desktop/DocumentOpener.h"
#include "ui/desktop/ShellInfo.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class ShellDeletes : public testing::Test {
  protected:
    tests::TestDir dir_;
};

TEST_F(ShellDeletes, NothingOutsideADriveAndNoDriveItself) {
    dir_.MakeFile("a.txt", "a");
    dir_.MakeFolder("sub");
    for (const char* path : {"", "E:", "E:\\", "a.txt", "E:a.txt", "E:\\sub\\..", "E:\\sub\\..\\a.txt",
                             "E:\\.", "E:\\\\", "E:\\sub\\\\", "Q:\\a.txt", "/"})
        EXPECT_FALSE(ui::ShellDelete(path)) << path;
    EXPECT_EQ(dir_.Count(), 2U);
}

TEST(ShellTypes, AreNamedByExtension) {
    EXPECT_TRUE(base::EndsWithNoCase(ui::FileTypeName(".xyzzy"), "xyzzy file"));
    EXPECT_EQ(ui::FileTypeName("."), "File");
    const std::string text = ui::FileTypeName(".txt");
    EXPECT_NE(text, "TXT File");
    EXPECT_TRUE(text[0] >= 'A' && text[0] <= 'Z') << text;
    EXPECT_EQ(ui::FileTypeName(".TXT"), text);
}

QIcon Mark(const char* name) {
    QPixmap pixmap(1, 1);
    pixmap.fill(QColor::fromRgb(static_cast<QRgb>(qHash(QByteArray(name)))));
    return QIcon(pixmap);
}

TEST(ShellIcons, ComeFromTheProgramForWhatItShowsEverywhere) {
    ui::SetIconSource(&Mark);
    const auto colour = [](const QIcon& icon) { return icon.pixmap(1, 1).toImage().pixel(0, 0); };
    const auto of = [&](const char* name) { return colour(Mark(name)); };
    EXPECT_EQ(colour(ui::FileIcon("E:\\a.b\\x.ZIP", false)), of("archive-zip"));
    EXPECT_EQ(colour(ui::FileIcon("E:\\x.zip", true)), of("folder"));
    EXPECT_EQ(colour(ui::FileIcon("E:\\", true)), of("drive-removable"));
    EXPECT_EQ(colour(ui::FileIcon("C:\\", true)), of("computer"));
    if constexpr (!tests::kIsWindows) { // which has icons for everything else
        EXPECT_EQ(colour(ui::FileIcon("E:\\a.zip\\noextension", false)), of("file"));
        EXPECT_EQ(colour(ui::FileIcon("E:\\x.xyzzy", false)), of("file"));
    }
    ui::SetIconSource(nullptr);
}

TEST(DesktopOpener, SaysWhenThereIsNothingToOpen) {
    const tests::TestDir dir;
    EXPECT_LE(ui::OpenDocument("E:\\missing.txt"), 32);
    EXPECT_LE(ui::OpenDocumentLower("Q:\\a.txt"), 32);
}

class FolderPicking : public testing::Test {
  protected:
    void SetUp() override {
        dir_.MakeFolder("Alpha/Inner");
        dir_.MakeFolder("beta");
        dir_.MakeFile("file.txt");
    }

    void Open(const std::string& start) {
        dialog_ = std::make_unique<ui::FolderPickerDialog>("Where to?", start, nullptr);
        dialog_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog_.get()));
    }

    void Type(const std::string& path) {
        auto* line = dialog_->findChild<QLineEdit*>(QStringLiteral("path"));
        line->selectAll();
        QTest::keyClicks(line, QString::fromStdString(path));
        QTest::keyClick(line, Qt::Key_Return);
    }

    std::string Path() {
        return dialog_->findChild<QLineEdit*>(QStringLiteral("path"))->text().toStdString();
    }

    QTreeView& Tree() { return *dialog_->findChild<QTreeView*>(QStringLiteral("folders")); }

    void Press(const char* button) {
        QTest::mouseClick(dialog_->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    }

    tests::TestDir dir_;
    fakes::RecordingMessages messages_;
    std::unique_ptr<ui::FolderPickerDialog> dialog_;
};

TEST_F(FolderPicking, StartsWhereItIsToldAndTakesWhatTheKeysChoose) {
    Open("e:\\alpha");
    EXPECT_EQ(dialog_->windowTitle(), QStringLiteral("Where to?"));
    EXPECT_EQ(Path(), "E:\\Alpha");
    QTest::keyClick(&Tree(), Qt::Key_Down);
    EXPECT_EQ(Path(), "E:\\Alpha\\Inner");
    QTest::keyClick(&Tree(), Qt::Key_Down);
    QTest::keyClick(&Tree(), Qt::Key_Return);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(dialog_->Folder(), "E:\\beta");
    // Or at the deepest folder that is there.
    Open("E:\\Alpha\\gone\\further");
    EXPECT_EQ(Path(), "E:\\Alpha");
    Open("Q:\\nowhere");
    EXPECT_FALSE(Path().empty());
}

TEST_F(FolderPicking, TakesATypedPathInAnyOfItsForms) {
    const std::pair<std::string, std::string> kCases[] = {
        {" E:\\Alpha\\ ", "E:\\Alpha"},
        {"E:/Alpha/Inner", "E:\\Alpha\\Inner"},
        {"E:", "E:\\"},
        {tests::kIsWindows ? "E:\\beta" : dir_.Host("beta").string(), "E:\\beta"},
    };
    for (const auto& [typed, folder] : kCases) {
        Open("E:\\");
        Type(typed);
        EXPECT_FALSE(dialog_->isVisible()) << typed;
        EXPECT_EQ(dialog_->Folder(), folder);
    }
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(FolderPicking, StaysOpenForWhatIsNoFolder) {
    Open("E:\\");
    for (const char* typed : {"E:\\missing", "E:\\file.txt", "nonsense", ""})
        Type(typed);
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(messages_.Ids(), std::vector<std::uint32_t>(4, IDS_NO_SUCH_FOLDER));
    Press("cancel");
    EXPECT_EQ(dialog_->Folder(), "");
}

TEST_F(FolderPicking, MakesAFolderAndChoosesIt) {
    Open("E:\\beta");
    messages_.replies = {"fresh"};
    Press("newFolder");
    EXPECT_TRUE(fs::is_directory(dir_.Host("beta/fresh")));
    EXPECT_EQ(Path(), "E:\\beta\\fresh");
    messages_.replies = {"..\\..\\up"};
    Press("newFolder");
    EXPECT_EQ(messages_.shown.size(), 1U);
    EXPECT_TRUE(dialog_->isVisible());
    Press("ok");
    EXPECT_EQ(dialog_->Folder(), "E:\\beta\\fresh");
}

} // namespace
