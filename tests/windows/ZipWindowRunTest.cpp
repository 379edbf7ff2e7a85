#include "ZipWindowFixture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

namespace {

/// Plays a user before modal windows: each time one is up that has not been dealt with, the next step runs on
/// it.
class ModalUser {
  public:
    using Step = std::function<void(dialogs::frmWinExtract&)>;

    explicit ModalUser(std::vector<Step> steps) : steps_(std::move(steps)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start(0);
    }

    std::size_t Done() const { return next_; }

  private:
    void Look() {
        auto* window = qobject_cast<dialogs::frmWinExtract*>(QApplication::activeModalWidget());
        if (window == nullptr || window == seen_ || !window->isVisible() || next_ == steps_.size())
            return;
        seen_ = window;
        steps_[next_++](*window);
    }

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    QPointer<QWidget> seen_;
    QTimer timer_;
};

class ZipWindowRun : public ZipWindow {};

TEST_F(ZipWindowRun, ShowsTheArchivesOneAfterAnotherEachWithItsOwnRows) {
    tests::MakeZip(dir_.Host("one.zip"), {{"1.txt", "1"}});
    dir_.MakeFile("two.zip", "no archive");
    tests::MakeZip(dir_.Host("three.zip"), {{"3.txt", "3"}, {"4.txt", "4"}});
    std::vector<std::string> seen;
    const auto note = [&](dialogs::frmWinExtract& window) {
        auto* list = window.findChild<QTreeView*>(QStringLiteral("ListView"));
        seen.push_back(window.windowTitle().toStdString() + ":" + std::to_string(list->model()->rowCount()));
    };
    ModalUser user({[&](auto& window) {
                        note(window);
                        window.template findChild<QCheckBox*>(QStringLiteral("chkAll"))->click();
                        window.template findChild<QPushButton*>(QStringLiteral("cmdExtractSame"))->click();
                    },
                    [&](auto& window) {
                        note(window);
                        QTest::keyClick(&window, Qt::Key_Escape);
                    },
                    [&](auto& window) {
                        note(window);
                        window.template findChild<QPushButton*>(QStringLiteral("cmdExit"))->click();
                    }});
    QElapsedTimer clock;
    clock.start();
    dialogs::frmWinExtract window;
    window.ArchiveList = "E:\\one.zip\r\nE:\\two.zip\r\nE:\\three.zip\r\nE:\\ignored.zip";
    window.ShowArchives();
    EXPECT_EQ(user.Done(), 3U);
    EXPECT_EQ(seen, (std::vector<std::string>{"ZIP archive 1 of 3:1", "ZIP archive 2 of 3:0",
                                              "ZIP archive 3 of 3:2"}));
    EXPECT_EQ(dir_.Read("1.txt"), "1");
    EXPECT_FALSE(Exists("3.txt"));
    EXPECT_FALSE(ExtractionDone());
    EXPECT_GE(clock.elapsed(), 500);
}

TEST_F(ZipWindowRun, EveryControlIsCaptionedNamedAndShownWhole) {
    tests::MakeZip(dir_.Host("one.zip"), {{"1.txt", "1"}});
    for (const auto& [language, points] : {std::pair("0409", 8), std::pair("0804", 9)}) {
        app::Application().LanguageId = language;
        Open("one.zip");
        EXPECT_EQ(Get<QPushButton>("cmdExtract").text(), QStringLiteral("Extract to &another folder"));
        EXPECT_EQ(List().model()->headerData(1, Qt::Horizontal), QStringLiteral("Modified"));
        EXPECT_TRUE(List().hasFocus());
        for (auto* button : window_->findChildren<QAbstractButton*>()) {
            if (button->objectName().isEmpty())
                continue;
            SCOPED_TRACE(button->objectName().toStdString());
            EXPECT_FALSE(button->text().isEmpty());
            EXPECT_FALSE(button->accessibleName().contains(QLatin1Char('&')));
            EXPECT_EQ(button->font().pointSize(), points);
            EXPECT_GE(button->width(), button->minimumSizeHint().width());
            EXPECT_GE(button->height(), button->minimumSizeHint().height());
        }
        for (const char* name : {"ListView", "PicProBar", "lblDestFile"})
            EXPECT_FALSE(Get<QWidget>(name).accessibleName().isEmpty()) << name;
    }
}

TEST_F(ZipWindowRun, ColumnsKeepTheirSharesAndTheListTakesTheRoom) {
    tests::MakeZip(dir_.Host("one.zip"), {{"1.txt", "1"}});
    Open("one.zip");
    const int heightBefore = List().height();
    window_->resize(window_->size() + QSize(400, 200));
    const double room = List().viewport()->width();
    constexpr double kShares[] = {0.30, 0.25, 0.15, 0.20};
    for (int column = 0; column < 4; ++column)
        EXPECT_NEAR(List().columnWidth(column) / room, kShares[column], 0.01) << column;
    EXPECT_EQ(List().height(), heightBefore + 200);

    // A column that the user has widened stays so.
    List().setColumnWidth(0, static_cast<int>(room / 2));
    window_->resize(window_->width() - 200, window_->height());
    EXPECT_NEAR(List().columnWidth(0) / static_cast<double>(List().viewport()->width()), 0.5, 0.01);
}

TEST_F(ZipWindowRun, AnEmptyListSaysSo) {
    dir_.MakeFile("text.zip", "no archive");
    Open("text.zip");
    const QImage told = List().viewport()->grab().toImage();
    const QRgb background = told.pixel(0, told.height() - 1);
    int written = 0;
    for (int x = 0; x < told.width(); ++x)
        for (int y = 0; y < told.height(); ++y)
            written += told.pixel(x, y) != background;
    EXPECT_GT(written, 100);
}

} // namespace
