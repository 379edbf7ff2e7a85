// What only the window of ZIP archives does.

#include "ArchiveWindowFixture.h"
#include "platform/Files.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

namespace {

constexpr char kTemp[] = "C:\\Pellarion\\Temp\\";

class ZipWindow : public ArchiveWindows {
  protected:
    void OpenZip(const std::string& file) { Open(Format::kZip, {file}); }

    /// An archive of "open", "secret" (encrypted) and "last", extracted in this order.
    void MakeLocked() {
        Make(Format::kZip, "locked", {{"open", "open"}});
        tests::AddEncrypted(dir_.Host("locked.zip"), "secret", "geheim", "pw");
        dir_.MakeFile("last", "last");
        tests::RunTool(QStringLiteral("zip"),
                       {QStringLiteral("-qm"), QStringLiteral("locked.zip"), QStringLiteral("last")},
                       dir_.Host());
    }

    /// Makes an archive by a Python script in which `z` is open for writing and `path` its path.
    void Script(const std::string& file, const std::string& script) {
        tests::RunTool(QStringLiteral("python3"),
                       {QStringLiteral("-c"),
                        QString::fromStdString("import sys, zipfile\npath = sys.argv[1]\n"
                                               "z = zipfile.ZipFile(path, 'w')\n" +
                                               script),
                        QString::fromStdString(file)},
                       dir_.Host());
    }
};

TEST_F(ZipWindow, ShowsEveryEntryInItsColumns) {
    tests::MakeZip(dir_.Host("mixed.zip"), {{"Alpha.txt", std::string(999, 'a'), "2007-01-31 23:59:58"},
                                            {"docs/", "", "2021-01-05 08:00:00"},
                                            {"docs/b.txt", std::string(1000, 'b'), "2007-02-01 00:00:00"},
                                            {"empty.dat", "", "2007-02-01 14:07:08"}});
    tests::AddEncrypted(dir_.Host("mixed.zip"), "secret.txt", "geheim", "pw");
    OpenZip("mixed.zip");
    EXPECT_EQ(Column(0), (Texts{" Alpha.txt", " docs/", " docs/b.txt", " empty.dat", "+secret.txt"}));
    EXPECT_EQ(Column(2), (Texts{"999", "Directory Entry", "1000", "0", "6"}));
    EXPECT_EQ(Column(3), Texts(5));
    EXPECT_EQ(Cell(0, 4), "20070131235958");
    EXPECT_EQ(Cell(1, 5), "000000000000000000000");
    for (int column = 0; column < List().model()->columnCount(); ++column)
        EXPECT_EQ(List().isColumnHidden(column), column >= 4) << column;
    EXPECT_TRUE(SelectedNames().empty());
    // A date alone for midnight, a time with seconds otherwise, and the year in full.
    EXPECT_EQ(Cell(2, 1).find("00:00"), std::string::npos) << Cell(2, 1);
    EXPECT_NE(Cell(3, 1).find("07:08"), std::string::npos) << Cell(3, 1);
    EXPECT_NE(Cell(3, 1).find("2007"), std::string::npos) << Cell(3, 1);
    ClickHeader(1);
    EXPECT_EQ(Column(4)[4] > Column(4)[3] && Column(4)[1] > Column(4)[0], true) << "by time";
    // Typing goes to the name, which the prefix is no part of.
    QTest::keyClicks(&List(), QStringLiteral("Sec"));
    EXPECT_EQ(SelectedNames(), Texts{"secret.txt"});
}

TEST_F(ZipWindow, AWrongPasswordLeavesNoFileAndEachCommandEndsInItsOwnWay) {
    MakeLocked();
    OpenZip("locked.zip");
    Check("chkAll");
    Check("chkDelete");
    picker_.folders = {"E:\\out"};
    messages_.replies = {"wrong"};
    QString inMidWork;
    messages_.onAsk = [&] { inMidWork = Percentage(); };
    Press("cmdExtract");
    EXPECT_EQ(messages_.Ids(), (Ids{555, 525}));
    EXPECT_EQ(inMidWork, QStringLiteral("33%"));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(Get<QPushButton>("cmdExtract").isEnabled());

    messages_.shown.clear();
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), Ids{555});
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
    EXPECT_TRUE(Exists("locked.zip"));
    EXPECT_FALSE(Exists("secret") || Exists("out/secret"));
}

TEST_F(ZipWindow, EscapeAndTheCloseButtonStopInTheMiddleAndTheNextAttemptStartsAfresh) {
    MakeLocked();
    OpenZip("locked.zip");
    Check("chkAll");
    messages_.replies = {"pw", "pw", "pw"};
    messages_.onAsk = [&] { QTest::keyClick(window_.get(), Qt::Key_Escape); };
    Press("cmdExtractSame");
    EXPECT_EQ(dir_.Read("secret"), "geheim");
    EXPECT_FALSE(Exists("last"));
    EXPECT_EQ(Percentage(), QStringLiteral("67%"));
    EXPECT_TRUE(window_->isVisible());

    messages_.onAsk = [&] { window_->close(); };
    Press("cmdExtractSame");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(Exists("last"));

    messages_.onAsk = nullptr;
    OpenZip("locked.zip");
    ClickRow("secret");
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_EQ(dir_.Count("out"), 1U);
    EXPECT_EQ(Percentage(), QStringLiteral("100%"));
    EXPECT_TRUE(ExtractionDone());
    EXPECT_TRUE(messages_.Ids().empty());
}

TEST_F(ZipWindow, AnArchiveThatDidNotComeOutRightIsKeptThoughItsStatusIsDone) {
    Script("crc.zip",
           "z.writestr('x.txt', 'content'); z.close()\n"
           "d = open(path, 'rb').read().replace(b'content', b'cOntent'); open(path, 'wb').write(d)");
    Script("bzip.zip", "z.writestr('y.txt', 'content', zipfile.ZIP_BZIP2); z.close()");
    for (const std::string archive : {"crc.zip", "bzip.zip"}) {
        SCOPED_TRACE(archive);
        OpenZip(archive);
        Check("chkAll");
        Check("chkDelete");
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_TRUE(Exists(archive));
        EXPECT_EQ(messages_.Ids().back(), 612U);
        EXPECT_FALSE(window_->isVisible());
    }
}

TEST_F(ZipWindow, ALargeEntryMovesTheStripBeforeItIsDone) {
    for (const char* method : {"STORED", "DEFLATED"}) {
        Script("large.zip",
               std::string("z.writestr('big', b'x' * (96 << 20), zipfile.ZIP_") + method + "); z.close()");
        OpenZip("large.zip");
        Check("chkAll");
        bool isBetween = false;
        Get<QLabel>("lblProBar").installEventFilter(this);
        onPaint_ = [&] {
            const int percentage = Percentage().chopped(1).toInt();
            isBetween = isBetween || (percentage > 0 && percentage < 100);
        };
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        onPaint_ = nullptr;
        EXPECT_TRUE(isBetween) << method;
        EXPECT_EQ(std::filesystem::file_size(dir_.Host("out/big")), 96U << 20);
    }
}

TEST_F(ZipWindow, TheFirstRowIsOpenedWithTheWholeArchiveAndEscapeEndsTheOpening) {
    Make(Format::kZip, "book",
         {{"index.html", "index"}, {"pages/", ""}, {"pages/a.html", "a"}, {"b.html", "b"}});
    OpenZip("book.zip");
    ClickRow("index.html");
    Press("cmdOpen");
    EXPECT_EQ(opener_.opened, Texts{std::string(kTemp) + "index.html"});
    EXPECT_TRUE(platform::FileExists(std::string(kTemp) + "pages\\a.html"));

    Check("chkAll");
    opener_.onOpen = [&] {
        if (opener_.opened.size() == 3)
            QTest::keyClick(window_.get(), Qt::Key_Escape);
    };
    Press("cmdOpen");
    EXPECT_EQ(opener_.opened.size(), 3U);
    EXPECT_TRUE(window_->isVisible());
}

TEST_F(ZipWindow, WhatWasNotExtractedIsNotOpened) {
    ASSERT_FALSE(platform::WriteWholeFile(std::string(kTemp) + "secret", std::string_view("old")));
    dir_.MakeFile("victim.txt", "mine");
    tests::AddEncrypted(dir_.Host("locked.zip"), "secret", "new", "pw");
    Script("locked.zip", "z.writestr('../../../e/victim.txt', 'evil'); z.writestr('fine', '1'); z.close()");
    tests::AddEncrypted(dir_.Host("locked.zip"), "secret", "new", "pw");
    OpenZip("locked.zip");
    Check("chkAll");
    Press("cmdOpen");
    EXPECT_EQ(messages_.asked.size(), 1U);
    EXPECT_EQ(opener_.opened, Texts{std::string(kTemp) + "fine"});
    EXPECT_EQ(dir_.Read("victim.txt"), "mine");
}

/// Plays a user before modal windows: each time one is up that has not been dealt with, the next step runs on
/// it.
class ModalUser {
  public:
    using Step = std::function<void(QWidget&)>;

    explicit ModalUser(std::vector<Step> steps) : steps_(std::move(steps)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start(0);
    }

    std::size_t Done() const { return next_; }

  private:
    void Look() {
        QWidget* window = QApplication::activeModalWidget();
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

TEST_F(ZipWindow, SeveralArchivesAreShownOneAfterAnotherEachWithItsOwnRows) {
    Make(Format::kZip, "one", {{"1.txt", "1"}});
    dir_.MakeFile("two.zip", "no archive");
    Make(Format::kZip, "three", {{"3.txt", "3"}, {"4.txt", "4"}});
    Texts seen;
    const auto note = [&](QWidget& window) {
        auto* list = window.findChild<QTreeView*>(QStringLiteral("ListView"));
        seen.push_back(window.windowTitle().toStdString() + ":" + std::to_string(list->model()->rowCount()));
    };
    const auto click = [](QWidget& window, const char* control) {
        window.findChild<QAbstractButton*>(QLatin1String(control))->click();
    };
    ModalUser user({[&](QWidget& window) {
                        note(window);
                        click(window, "chkAll");
                        click(window, "cmdExtractSame");
                    },
                    [&](QWidget& window) {
                        note(window);
                        QTest::keyClick(&window, Qt::Key_Escape);
                    },
                    [&](QWidget& window) {
                        note(window);
                        click(window, "cmdExit");
                    }});
    QElapsedTimer clock;
    clock.start();
    dialogs::frmWinExtract window;
    window.ArchiveList = "E:\\one.zip\r\nE:\\two.zip\r\nE:\\three.zip\r\nE:\\ignored.zip";
    window.ShowArchives();
    EXPECT_EQ(user.Done(), 3U);
    EXPECT_EQ(seen, (Texts{"ZIP archive 1 of 3:1", "ZIP archive 2 of 3:0", "ZIP archive 3 of 3:2"}));
    EXPECT_EQ(dir_.Read("1.txt"), "1");
    EXPECT_FALSE(Exists("3.txt"));
    EXPECT_FALSE(ExtractionDone());
    EXPECT_GE(clock.elapsed(), 500);
}

} // namespace
