// What only the window of ZIP archives does.

#include "app/TextIds.h"
#include "platform/Files.h"
#include "ui/ModalUser.h"
#include "ui/archive/ArchiveWindowFixture.h"

#include <QElapsedTimer>

namespace {

using tests::DeflatedEntry;
using tests::StoredEntry;

constexpr char kTemp[] = "C:\\Pellarion\\Temp\\";

class ZipWindow : public ArchiveWindows {
  protected:
    void OpenZip(const std::string& file) { Open(Format::kZip, {file}); }

    void MakeEntries(const std::string& file, std::vector<tests::ZipEntry> entries) {
        tests::ZipBuilder zip;
        zip.entries = std::move(entries);
        dir_.MakeFile(file, zip.Bytes());
    }

    static tests::ZipEntry Secret(const std::string& content) {
        return tests::Encrypted(tests::DeflatedEntry("secret", content), "pw");
    }

    /// An archive of "open", "secret" (encrypted) and "last", extracted in this order.
    void MakeLocked() {
        MakeEntries("locked.zip",
                    {StoredEntry("open", "open"), Secret("geheim"), StoredEntry("last", "last")});
    }
};

/// An entry of a moment: its words as the ZIP application note has them (section 4.4.6).
tests::ZipEntry Dated(tests::ZipEntry entry, int year, int month, int day, int hour, int minute, int second) {
    entry.date = static_cast<std::uint16_t>((year - 1980) << 9 | month << 5 | day);
    entry.time = static_cast<std::uint16_t>(hour << 11 | minute << 5 | second / 2);
    return entry;
}

TEST_F(ZipWindow, ShowsEveryEntryInItsColumns) {
    MakeEntries("mixed.zip",
                {Dated(DeflatedEntry("Alpha.txt", std::string(999, 'a')), 2007, 1, 31, 23, 59, 58),
                 Dated(StoredEntry("docs/", ""), 2021, 1, 5, 8, 0, 0),
                 Dated(DeflatedEntry("docs/b.txt", std::string(1000, 'b')), 2007, 2, 1, 0, 0, 0),
                 Dated(StoredEntry("empty.dat", ""), 2007, 2, 1, 14, 7, 8), Secret("geheim")});
    OpenZip("mixed.zip");
    EXPECT_EQ(Column(0), (Texts{" Alpha.txt", " docs/", " docs/b.txt", " empty.dat", "+secret"}));
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
    EXPECT_EQ(SelectedNames(), Texts{"secret"});
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
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_WRONG_PASSWORD, IDS_EXTRACTION_FAILED}));
    EXPECT_EQ(inMidWork, QStringLiteral("33%"));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(Get<QPushButton>("cmdExtract").isEnabled());

    messages_.shown.clear();
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), Ids{IDS_WRONG_PASSWORD});
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
    EXPECT_TRUE(dir_.Exists("locked.zip"));
    EXPECT_FALSE(dir_.Exists("secret") || dir_.Exists("out/secret"));
}

TEST_F(ZipWindow, EscapeAndTheCloseButtonStopInTheMiddleAndTheNextAttemptStartsAfresh) {
    MakeLocked();
    OpenZip("locked.zip");
    Check("chkAll");
    messages_.replies = {"pw", "pw", "pw"};
    messages_.onAsk = [&] { QTest::keyClick(window_.get(), Qt::Key_Escape); };
    Press("cmdExtractSame");
    EXPECT_EQ(dir_.Read("secret"), "geheim");
    EXPECT_FALSE(dir_.Exists("last"));
    EXPECT_EQ(Percentage(), QStringLiteral("67%"));
    EXPECT_TRUE(window_->isVisible());

    messages_.onAsk = [&] { window_->close(); };
    Press("cmdExtractSame");
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(dir_.Exists("last"));

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
    tests::ZipEntry changed = StoredEntry("x.txt", "content");
    changed.stored = "cOntent";
    MakeEntries("crc.zip", {changed});
    tests::ZipEntry unknown = StoredEntry("y.txt", "content");
    unknown.method = 12; // BZIP2
    MakeEntries("bzip.zip", {unknown});
    for (const std::string archive : {"crc.zip", "bzip.zip"}) {
        SCOPED_TRACE(archive);
        OpenZip(archive);
        Check("chkAll");
        Check("chkDelete");
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_TRUE(dir_.Exists(archive));
        EXPECT_EQ(messages_.Ids().back(), std::uint32_t{IDS_NOT_READ_BACK});
        EXPECT_FALSE(window_->isVisible());
    }
}

TEST_F(ZipWindow, ALargeEntryMovesTheStripBeforeItIsDone) {
    const std::string content(96 << 20, 'x');
    for (const bool isStored : {true, false}) {
        MakeEntries("large.zip", {isStored ? StoredEntry("big", content) : DeflatedEntry("big", content)});
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
        EXPECT_TRUE(isBetween) << isStored;
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
    MakeEntries("locked.zip",
                {StoredEntry("../../../e/victim.txt", "evil"), StoredEntry("fine", "1"), Secret("new")});
    OpenZip("locked.zip");
    Check("chkAll");
    Press("cmdOpen");
    EXPECT_EQ(messages_.asked.size(), 1U);
    EXPECT_EQ(opener_.opened, Texts{std::string(kTemp) + "fine"});
    EXPECT_EQ(dir_.Read("victim.txt"), "mine");
}

TEST_F(ZipWindow, SeveralArchivesAreShownOneAfterAnotherEachWithItsOwnRows) {
    Make(Format::kZip, "one", {{"1.txt", "1"}});
    dir_.MakeFile("two.zip", "no archive");
    Make(Format::kZip, "three", {{"3.txt", "3"}, {"4.txt", "4"}});
    Texts seen;
    const auto noteAnd = [&](const std::function<void(QWidget&)>& act) {
        return ModalUser::Step{"frmWinExtract", [&seen, act](QWidget& window) {
                                   auto* list = window.findChild<QTreeView*>(QStringLiteral("ListView"));
                                   seen.push_back(window.windowTitle().toStdString() + ":" +
                                                  std::to_string(list->model()->rowCount()));
                                   act(window);
                               }};
    };
    const auto click = [](QWidget& window, const char* control) {
        window.findChild<QAbstractButton*>(QLatin1String(control))->click();
    };
    const ModalUser user({noteAnd([&](QWidget& window) {
                              click(window, "chkAll");
                              click(window, "cmdExtractSame");
                          }),
                          noteAnd([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }),
                          noteAnd([&](QWidget& window) { click(window, "cmdExit"); })});
    QElapsedTimer clock;
    clock.start();
    ui::frmWinExtract window;
    window.ArchiveList = "E:\\one.zip\r\nE:\\two.zip\r\nE:\\three.zip\r\nE:\\ignored.zip";
    window.ShowArchives();
    EXPECT_EQ(user.Done(), 3U);
    EXPECT_EQ(seen, (Texts{"ZIP archive 1 of 3:1", "ZIP archive 2 of 3:0", "ZIP archive 3 of 3:2"}));
    EXPECT_EQ(dir_.Read("1.txt"), "1");
    EXPECT_FALSE(dir_.Exists("3.txt"));
    EXPECT_FALSE(ExtractionDone());
    EXPECT_GE(clock.elapsed(), 500);
}

} // namespace
