#include "app/TextIds.h"
#include "app/Twips.h"
#include "platform/Files.h"
#include "ui/explorer/ExplorerWindowFixture.h"
#include "ui/explorer/window/PaneLayout.h"
#include "ui/explorer/window/VSplitter.h"

#include <QDialog>
#include <QMenu>
#include <QProgressBar>
#include <QRegularExpression>
#include <QScreen>

#include <chrono>

namespace {

class ExplorerLayout : public ExplorerWindow {
  protected:
    ui::VSplitter& Splitter() { return Get<ui::VSplitter>("VSplitter"); }

    void DragSplitter(int pixels) {
        const QPoint grip = Splitter().rect().center();
        QTest::mousePress(&Splitter(), Qt::LeftButton, {}, grip);
        QMouseEvent move(QEvent::MouseMove, QPointF(grip + QPoint(pixels, 0)),
                         Splitter().mapToGlobal(QPointF(grip + QPoint(pixels, 0))), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&Splitter(), &move);
        QTest::mouseRelease(&Splitter(), Qt::LeftButton);
    }

    QSize OuterSize() { return window_->frameGeometry().size(); }
};

} // namespace

TEST(PaneLayout, PlacesThePanesByTheWindowsArithmetic) {
    const ui::PaneLayout out = ui::ComputePaneLayout({12315, 12315, 0, 900, 420, 4570, 1650, 1000, 1600});
    const std::vector<int> figures = {
        out.treeTop,      *out.treeWidth,       out.listLeft,      *out.listWidth,  out.stripTop,
        out.progressLeft, out.percentLabelLeft, out.sizeLabelLeft, out.splitterTop, *out.paneHeight};
    EXPECT_EQ(figures, (std::vector<int>{1330, 4555, 4625, 7620, 900, 10465, 9015, 8015, 1320, 10191}));
    // A length that would not be positive is left alone.
    const ui::PaneLayout small = ui::ComputePaneLayout({225, 900, 0, 90, 6, 100, 0, 0, 0});
    EXPECT_FALSE(small.listWidth || small.paneHeight);
    EXPECT_EQ(ui::ComputePaneLayout({225, 900, 0, 90, 5, 99, 0, 0, 0}).listWidth, 1);
}

TEST_F(ExplorerLayout, TheWindowOpensAsTheSettingsSayAndSavesWhatTheyBecame) {
    Open();
    EXPECT_EQ(OuterSize(), QSize(821, 821).boundedTo(window_->screen()->availableSize()));
    EXPECT_EQ(Splitter().Left(), 4570);
    EXPECT_EQ(List().columnWidth(0), 120);
    EXPECT_EQ(List().columnWidth(1), 53);
    EXPECT_EQ(List().columnWidth(2), 96);
    EXPECT_GE(List().columnWidth(3), 133);
    for (int column = 4; column < 8; ++column)
        EXPECT_TRUE(List().isColumnHidden(column));

    List().header()->resizeSection(0, 200);
    window_->resize(600, 500);
    const QSize outer = OuterSize();
    Splitter().SetLeft(3000);
    window_->close();
    EXPECT_EQ(Setting("Size", "Width"), std::to_string(app::TwipsFromPixels(outer.width())));
    EXPECT_EQ(Setting("Size", "Height"), std::to_string(app::TwipsFromPixels(outer.height())));
    EXPECT_EQ(Setting("VSplitter", "Left"), "3000");
    EXPECT_EQ(Setting("Grid", "ColWidth0"), "3000");
    EXPECT_EQ(Setting("Grid", "ColWidth1"), "799.93");
    EXPECT_EQ(Setting("Grid", "ColWidth3"), "2000.12");
    EXPECT_FALSE(std::filesystem::exists(dir_.HostC() / "Pellarion/temp/ox_langfile0409.dll"));
}

TEST_F(ExplorerLayout, ClosingWritesTheSettingsOnceAndOnlyWhenTheyChanged) {
    const std::filesystem::path file = tests::ProgramDir() / "setting.ini";
    const auto close = [this](bool changes) {
        Open();
        if (changes) {
            window_->resize(600, 500);
            Splitter().SetLeft(3000);
            List().header()->resizeSection(0, 200);
            List().header()->resizeSection(2, 90);
        }
        window_->close();
    };
    const auto longAgo = std::filesystem::last_write_time(file) - std::chrono::hours(1);
    std::filesystem::last_write_time(file, longAgo);
    base::SystemError error;
    const std::optional<std::string> before = platform::ReadWholeFile("P:\\setting.ini", 1000, error);
    tests::NameWatch watch(file);
    close(false);
    EXPECT_EQ(platform::ReadWholeFile("P:\\setting.ini", 1000, error), before);
    EXPECT_EQ(std::filesystem::last_write_time(file), longAgo);
    EXPECT_EQ(watch.Count(), 0) << "the file is the same one";

    close(true);
    EXPECT_EQ(Setting("VSplitter", "Left"), "3000");
    EXPECT_EQ(Setting("Grid", "ColWidth2"), "1350");
    EXPECT_EQ(watch.Count(), watch.IsCounting() ? 1 : 0);
}

TEST_F(ExplorerLayout, MissingValuesHaveDefaultsOfTheirOwnAndWordsAreNoNumbers) {
    std::ofstream(tests::ProgramDir() / "setting.ini")
        << "[Size]\r\nWidth=wide\r\n[Grid]\r\nColWidth0=1500\r\n";
    Open();
    EXPECT_EQ(OuterSize().height(), 536);
    EXPECT_EQ(Splitter().Left(), 3500);
    EXPECT_EQ(List().columnWidth(0), 100);
    EXPECT_EQ(List().columnWidth(1), 53);
}

TEST_F(ExplorerLayout, TheSplitterMovesThePanesAndSpringsBack) {
    Open();
    const int right = List().geometry().right();
    DragSplitter(-60);
    EXPECT_EQ(Splitter().Left(), app::TwipsFromPixels(app::PixelsFromTwips(4570) - 60));
    EXPECT_EQ(List().geometry().right(), right);
    EXPECT_LT(Tree().geometry().right(), List().geometry().left());

    DragSplitter(-2000);
    EXPECT_EQ(Splitter().Left(), 100);
    Splitter().SetLeft(99);
    EXPECT_EQ(Splitter().Left(), 100);
    DragSplitter(5000);
    EXPECT_TRUE(window_->centralWidget()->rect().intersects(Splitter().geometry()));
}

TEST_F(ExplorerLayout, PanesReachTheWindowsEdgesWhateverItsSize) {
    Open();
    for (const QSize size : {QSize(821, 700), QSize(1200, 500), QSize(640, 480)}) {
        window_->resize(size);
        const QRect inside = window_->centralWidget()->rect();
        EXPECT_EQ(List().geometry().bottomRight(), inside.bottomRight());
        EXPECT_EQ(Tree().geometry().bottom(), inside.bottom());
        EXPECT_EQ(List().geometry().top(), Get<QWidget>("picBar").geometry().bottom() + 2);
    }
}

TEST_F(ExplorerLayout, FocusChoosesMenuAndToolbar) {
    Open();
    const auto visible = [this](const char* bar, const char* menu) {
        return Get<QToolBar>(bar).isVisible() && Get<QMenu>(menu).menuAction()->isVisible();
    };
    EXPECT_TRUE(Tree().hasFocus());
    EXPECT_TRUE(visible("toolFolder", "mnuFolder"));
    EXPECT_FALSE(visible("toolFile", "mnuFile"));
    QTest::keyClick(&Tree(), Qt::Key_Tab);
    EXPECT_TRUE(List().hasFocus());
    EXPECT_TRUE(visible("toolFile", "mnuFile"));
    EXPECT_FALSE(Get<QToolBar>("toolFolder").isVisible());
    EXPECT_FALSE(Get<QMenu>("mnuFolder").menuAction()->isVisible());
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, Tree().viewport()->rect().center());
    EXPECT_TRUE(visible("toolFolder", "mnuFolder"));
    EXPECT_FALSE(Get<QAction>("mnuHelpUpdates").isVisible());
}

TEST_F(ExplorerLayout, TheWindowComesBackAsSavedAfterOneOfTheProgramsWindows) {
    Open();
    const QSize saved = OuterSize();
    window_->resize(500, 400);
    const QSize changed = OuterSize();
    Splitter().SetLeft(1500);

    const auto visit = [this](const char* name) {
        QDialog other(window_.get());
        other.setObjectName(QLatin1String(name));
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &other; }));
        other.close();
        window_->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == window_.get(); }));
    };
    visit("messageBox");
    EXPECT_EQ(OuterSize(), changed);
    visit("frmextract");
    EXPECT_EQ(OuterSize(), saved);
    EXPECT_EQ(Splitter().Left(), 4570);
    EXPECT_LE((window_->frameGeometry().center() - window_->screen()->geometry().center()).manhattanLength(),
              2);
}

TEST_F(ExplorerLayout, TheStripShowsTheSpaceOfTheProgramsDrive) {
    Open();
    const QRegularExpression figures(QStringLiteral("^\\d+MB \\((100|\\d{1,2}(\\.\\d{1,2})?)%\\)$"));
    EXPECT_TRUE(figures.match(Get<QLabel>("lblPercent").text()).hasMatch());
    EXPECT_EQ(Get<QLabel>("lblsize").text().toStdString(), app::LoadText(IDS_FREE_SPACE) + ": ");
    const auto& bar = Get<QProgressBar>("ProgressBar");
    EXPECT_EQ(Get<QLabel>("lblPercent").text().section(QLatin1String("MB"), 0, 0).toInt(), bar.value());
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_LE(bar.geometry().right(), Get<QWidget>("picBar").width());
    EXPECT_FALSE(bar.geometry().intersects(Get<QLabel>("lblsize").geometry()));
}

TEST_F(ExplorerLayout, EveryButtonHasACaptionAndEveryControlAName) {
    Open();
    for (const char* bar : {"toolFolder", "toolFile"}) {
        for (const QAction* action : Get<QToolBar>(bar).actions()) {
            const QString caption = action->isSeparator() ? QStringLiteral("-") : action->iconText();
            EXPECT_FALSE(caption.isEmpty() || caption.contains(QLatin1Char('&')))
                << action->objectName().toStdString();
        }
    }
    for (const char* name : {"TreeView", "ListView", "toolFolder", "toolFile", "ProgressBar", "VSplitter"})
        EXPECT_FALSE(Get<QWidget>(name).accessibleName().isEmpty()) << name;
}
