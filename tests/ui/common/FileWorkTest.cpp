#include "ui/common/FileWork.h"

#include "app/TextIds.h"
#include "app/Texts.h"
#include "fakes/RecordingMessages.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"
#include "ui/common/ProgressWindow.h"
#include "ui/common/PropertiesWindow.h"
#include "ui/common/ShellCopy.h"
#include "ui/common/ShellDelete.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using ui::FileWork;
using namespace std::chrono_literals;

ui::ProgressWindow* ShownWindow() {
    return qobject_cast<ui::ProgressWindow*>(QApplication::activeModalWidget());
}

class FileWorkTest : public testing::Test {
  protected:
    tests::TestDir dir_;
    fakes::RecordingMessages messages_;
};

TEST_F(FileWorkTest, NoWindowWithinABlink) {
    dir_.MakeFile("a");
    FileWork work(FileWork::Kind::kDelete, {"E:\\a"}, nullptr, 1h);
    EXPECT_TRUE(work.Proceed({"E:\\a", 0, 0}));
    EXPECT_EQ(ShownWindow(), nullptr);
}

TEST_F(FileWorkTest, StopButtonEndsTheWholeWork) {
    if (tests::kIsWindows)
        GTEST_SKIP() << "the system's shell copies there, in a window of its own";
    for (const char* name : {"one/a", "one/b", "two/c"})
        dir_.MakeFile(name);
    dir_.MakeFolder("to");
    {
        FileWork work(FileWork::Kind::kCopy, {"E:\\one", "E:\\two"}, nullptr, 0ms);
        EXPECT_TRUE(ui::ShellCopy("E:\\one", "E:\\to"));
        ui::ProgressWindow* window = ShownWindow();
        ASSERT_NE(window, nullptr);
        EXPECT_FALSE(window->findChild<QLabel*>("path")->text().isEmpty());
        QTest::mouseClick(window->findChild<QPushButton*>("stop"), Qt::LeftButton);
        EXPECT_TRUE(window->IsStopped());
        // The window is asked again once it is due.
        ASSERT_TRUE(QTest::qWaitFor([&] { return !work.Proceed({"E:\\two", 0, 0}); }));
        EXPECT_TRUE(work.WasStopped());
        EXPECT_FALSE(ui::ShellCopy("E:\\two", "E:\\to"));
    }
    EXPECT_EQ(ShownWindow(), nullptr);
    EXPECT_TRUE(dir_.Exists("to/one/b"));
    EXPECT_FALSE(dir_.Exists("to/two"));
    EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(FileWorkTest, OneReportForAllFailures) {
    {
        FileWork work(FileWork::Kind::kDelete, {}, nullptr, 1h);
        for (int i = 0; i < 9; ++i)
            EXPECT_FALSE(ui::ShellDelete("E:\\gone" + std::to_string(i)));
        EXPECT_FALSE(ui::ShellDelete("E:\\"));
        EXPECT_TRUE(messages_.shown.empty());
    }
    ASSERT_EQ(messages_.Ids(), (std::vector<std::uint32_t>{IDS_NOT_ALL_DELETED}));
    EXPECT_NE(messages_.shown[0].text.find("E:\\gone5\n"), std::string::npos);
    EXPECT_EQ(messages_.shown[0].text.find("E:\\gone6\n"), std::string::npos);
    EXPECT_EQ(FileWork::Current(), nullptr);
}

TEST_F(FileWorkTest, PropertiesCountAFolder) {
    dir_.MakeFile("Docs/a.txt", std::string(1500, 'x'));
    dir_.MakeFile("Docs/Work/b.txt");
    auto* window = new ui::PropertiesWindow("E:\\Docs\\", nullptr);
    EXPECT_EQ(window->findChild<QLabel*>("name")->text(), "Docs");
    EXPECT_EQ(window->findChild<QLabel*>("location")->text(), "E:\\");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->findChild<QLabel*>("size")->text().endsWith("..."); }));
    EXPECT_TRUE(window->findChild<QLabel*>("size")->text().contains("1.4") ||
                window->findChild<QLabel*>("size")->text().contains("1.5"))
        << window->findChild<QLabel*>("size")->text().toStdString();
    delete window;
}

} // namespace
