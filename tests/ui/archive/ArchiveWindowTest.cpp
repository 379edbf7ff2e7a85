// What the windows of all archive formats have in common, each shown with each.

#include "app/TextIds.h"
#include "platform/Files.h"
#include "support/SmallDisk.h"
#include "ui/archive/ArchiveWindowFixture.h"
#include "ui/archive/OpenedEntries.h"

namespace {

constexpr char kTemp[] = "C:\\Pellarion\\Temp\\";

TEST_P(EveryArchiveWindow, ListsInArchiveOrderAndSortsRowsThatStayMatchedToTheirEntries) {
    OpenNew("x", {{"c.txt", "see"}, {"A.txt", std::string(1000, 'a')}, {"b.txt", std::string(999, 'b')}});
    EXPECT_EQ(Column(7), (Texts{"11c.txt", "11A.txt", "11b.txt"}));
    EXPECT_EQ(Cell(1, 5), "000000000000000001000");
    EXPECT_EQ(Cell(0, 6), tests::TestDir::Path("x" + Extension(F())));
    Select({"c.txt", "b.txt"});
    ClickHeader(0);
    EXPECT_EQ(Column(7), (Texts{"11A.txt", "11b.txt", "11c.txt"}));
    ClickHeader(2);
    EXPECT_EQ(Column(7), (Texts{"11c.txt", "11b.txt", "11A.txt"})) << "by number, not by text";
    ClickHeader(2);
    EXPECT_EQ(Column(7), (Texts{"11A.txt", "11b.txt", "11c.txt"}));
    ClickHeader(1);
    EXPECT_EQ(Column(7), (Texts{"11c.txt", "11A.txt", "11b.txt"})) << "equal keys keep the archive's order";
    EXPECT_EQ(SelectedNames(), (Texts{"c.txt", "b.txt"}));
    ClickHeader(0);
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_EQ(dir_.Read("out/" + In("x", "c.txt")), "see");
    EXPECT_EQ(dir_.Read("out/" + In("x", "b.txt")), std::string(999, 'b'));
    EXPECT_FALSE(dir_.Exists("out/" + In("x", "A.txt")));
    EXPECT_EQ(Get<QLabel>("lblDestFile").text(), QStringLiteral("E:\\out\\"));
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(ExtractionDone());
    EXPECT_TRUE(messages_.Ids().empty());
}

TEST_P(EveryArchiveWindow, ExtractsBesideTheArchiveEverythingWhenAllIsChecked) {
    OpenNew("sub/x", {{"a.txt", "ay"}, {"IN/b.txt", "bee"}, {"c.txt", "see"}});
    Get<QAction>("mnuSelectAll").trigger();
    EXPECT_TRUE(Get<QCheckBox>("chkAll").isChecked());
    EXPECT_EQ(SelectedNames().size(), 3U);
    ClickRow("a.txt");
    Press("cmdExtractSame");
    EXPECT_EQ(dir_.Read("sub/" + In("x", "IN/b.txt")), "bee");
    EXPECT_EQ(dir_.Read("sub/" + In("x", "c.txt")), "see");
    EXPECT_EQ(Get<QLabel>("lblDestFile").text(), QStringLiteral("E:\\sub\\"));
    EXPECT_TRUE(dir_.Exists("sub/x" + Extension(F())));
    EXPECT_TRUE(ExtractionDone());
}

TEST_P(EveryArchiveWindow, NothingIsDoneWithoutASelectionOrAFolder) {
    OpenNew("x", {{"a.txt", "ay"}});
    Check("chkAll");
    Check("chkAll");
    for (const char* button : {"cmdExtract", "cmdExtractSame", "cmdOpen"})
        Press(button);
    EXPECT_EQ(messages_.Ids(), (Ids{IDS_NOTHING_SELECTED, IDS_NOTHING_SELECTED, IDS_NOTHING_SELECTED}));
    EXPECT_TRUE(picker_.prompts.empty());

    messages_.shown.clear();
    ClickRow("a.txt");
    picker_.folders = {"  "};
    Press("cmdExtract");
    Press("cmdExtract");
    EXPECT_EQ(messages_.Ids(), IsZip() ? Ids() : (Ids{IDS_EXTRACTION_FAILED, IDS_EXTRACTION_FAILED}));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
    EXPECT_EQ(SelectedNames(), Texts{"a.txt"});
}

TEST_P(EveryArchiveWindow, DeletesOnlyAnArchiveThatWasExtractedWhole) {
    const std::string file = OpenNew("x", {{"a.txt", "ay"}, {"b.txt", "bee"}, {"c.txt", "see"}});
    Check("chkDelete");
    Select({"a.txt", "b.txt"});
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(),
              IsZip() ? Ids{IDS_NOT_ALL_EXTRACTED} : (Ids{IDS_NOT_ALL_EXTRACTED, IDS_NOT_ALL_EXTRACTED}))
        << "for each selected row";
    EXPECT_TRUE(dir_.Exists(file));
    EXPECT_FALSE(window_->isVisible());

    messages_.shown.clear();
    Open(F(), {file});
    Check("chkDelete");
    Select({"a.txt", "b.txt", "c.txt"});
    picker_.folders = {"E:\\"};
    Press("cmdExtract");
    EXPECT_TRUE(messages_.Ids().empty());
    EXPECT_FALSE(dir_.Exists(file));
    EXPECT_EQ(dir_.Read(In("x", "c.txt")), "see");
}

TEST_P(EveryArchiveWindow, NamesMayHaveBothSeparators) {
    const std::string file = OpenNew("x", {{"MIX/IN\\a.txt", "ay"}});
    Check("chkAll");
    Check("chkDelete");
    Press("cmdExtractSame");
    EXPECT_EQ(dir_.Read(In("x", "MIX/IN/a.txt")), "ay");
    EXPECT_TRUE(messages_.Ids().empty());
    EXPECT_FALSE(dir_.Exists(file));
}

TEST_P(EveryArchiveWindow, KeepsAnArchiveOfWhichSomethingCannotBeReadBack) {
    const std::vector<Item> kCases[] = {
        {{"same.txt", "first"}, {"same.txt", "second"}},
        {{"a.txt", "ay"}, {"../victim.txt", "evil"}},
        {{"a.txt", "ay"}, {"nul.txt", "evil"}},
    };
    dir_.MakeFile("victim.txt", "mine");
    for (const auto& items : kCases) {
        SCOPED_TRACE(items.back().name);
        messages_.shown.clear();
        const std::string file = OpenNew("out/x", items);
        Check("chkAll");
        Check("chkDelete");
        Press("cmdExtractSame");
        ASSERT_FALSE(messages_.Ids().empty());
        EXPECT_EQ(messages_.Ids().back(), std::uint32_t{IDS_NOT_READ_BACK});
        EXPECT_TRUE(dir_.Exists(file));
        EXPECT_EQ(dir_.Read("victim.txt"), "mine");
    }
}

TEST_P(EveryArchiveWindow, AFullDiskAndAVanishedArchiveLoseNothing) {
    const std::string file = OpenNew("x", {{"big", std::string(200000, 'x')}, {"small", "s"}});
    Check("chkAll");
    Check("chkDelete");
    if (const tests::SmallDisk disk(dir_.Host("out")); disk.IsMounted()) {
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_FALSE(messages_.Ids().empty());
        EXPECT_TRUE(dir_.Exists(file));
        EXPECT_FALSE(dir_.Exists("out/" + In("x", "big")));
    }
    messages_.shown.clear();
    Open(F(), {file});
    std::filesystem::remove(dir_.Host(file));
    Check("chkAll");
    Check("chkDelete");
    picker_.folders = {"E:\\out"};
    Press("cmdExtract");
    EXPECT_FALSE(messages_.Ids().empty());
    EXPECT_FALSE(dir_.Exists("out/" + In("x", "small")));
}

TEST_P(EveryArchiveWindow, EscapeStopsAfterTheEntryInHandAndExitThenCloses) {
    for (const bool exits : {false, true}) {
        SCOPED_TRACE(exits ? "Exit" : "Escape");
        const std::string file = OpenNew("x", {{"1", "one"}, {"2", "two"}, {"3", "three"}});
        Check("chkAll");
        Check("chkDelete");
        onWork_ = [&] {
            for (const char* control : {"cmdExtract", "cmdExtractSame", "cmdOpen", "chkAll", "chkDelete"})
                EXPECT_FALSE(Get<QWidget>(control).isEnabled()) << control;
            ClickHeader(0);
            DoubleClickRow("1");
            EXPECT_EQ(SelectedNames().size(), 3U);
            if (exits)
                Press("cmdExit");
            else
                QTest::keyClick(window_.get(), Qt::Key_Escape);
            EXPECT_TRUE(window_->isVisible()) << "the work ends first";
        };
        picker_.folders = {"E:\\out"};
        Press("cmdExtract");
        EXPECT_EQ(window_->isVisible(), !exits);
        EXPECT_FALSE(dir_.Exists("out/" + In("x", "3")));
        EXPECT_TRUE(dir_.Exists(file));
        EXPECT_FALSE(ExtractionDone());
        EXPECT_TRUE(messages_.Ids().empty());
        EXPECT_TRUE(opener_.opened.empty());
        EXPECT_TRUE(Get<QPushButton>("cmdExtract").isEnabled());
    }
}

TEST_P(EveryArchiveWindow, OpensFromATemporaryFolderThatIsEmptiedLater) {
    OpenNew("book", {{"index.html", "index"}, {"pages/a.html", "a"}, {"b.html", "b"}});
    app::Application().ExtractionDone = true;
    DoubleClickRow("b.html");
    const std::string path = kTemp + (IsCab() ? std::string("book\\") : std::string()) + "b.html";
    EXPECT_EQ(opener_.opened, Texts{path});
    EXPECT_EQ(opener_.verbs, Texts{IsCab() ? "open" : "Open"});
    EXPECT_TRUE(platform::FileExists(path));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(ExtractionDone());
    EXPECT_EQ(Percentage(), IsRar() ? QString() : QStringLiteral("100%"));

    // Enter opens all that is selected, in the order of the list; what the user changes stays.
    ClickHeader(2);
    ClickHeader(2);
    Select({"index.html", "b.html"});
    QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
    ASSERT_EQ(opener_.opened.size(), 3U);
    EXPECT_EQ(opener_.opened[2], path);
    ASSERT_FALSE(platform::WriteWholeFile(opener_.opened[1], std::string_view("changed")));
    ASSERT_FALSE(platform::WriteWholeFile(std::string(kTemp) + "other.txt", std::string_view("other")));
    ui::EmptyOpenFolder();
    EXPECT_FALSE(platform::FileExists(path));
    EXPECT_TRUE(platform::FileExists(opener_.opened[1]));
    EXPECT_TRUE(platform::FileExists(std::string(kTemp) + "other.txt"));
    EXPECT_FALSE(platform::FolderExists(std::string(kTemp) + "pages"));
}

TEST_P(EveryArchiveWindow, HoldsTensOfThousandsOfEntries) {
    constexpr int kMany = 65535;
    std::vector<Item> items(kMany);
    for (int i = 0; i < kMany; ++i)
        items[static_cast<std::size_t>(i)] = {"f" + std::to_string(kMany - i), "1"};
    OpenNew("many", items);
    ASSERT_EQ(RowCount(), kMany);
    ClickHeader(0);
    EXPECT_EQ(NameIn(0), "f1");
    EXPECT_EQ(NameIn(1), "f10");
    ClickRow("f40000");
    Press("cmdExtractSame");
    EXPECT_TRUE(dir_.Exists(In("many", "f40000")));
    EXPECT_FALSE(dir_.Exists(In("many", "f39999")));
}

TEST_P(EveryArchiveWindow, EveryControlIsCaptionedNamedAndShownWholeAndTheListTakesTheRoom) {
    for (const auto& [language, points] : {std::pair("0409", 8), std::pair("0804", 9)}) {
        app::Application().LanguageId = language;
        OpenNew("one", {{"1.txt", "1"}});
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
        for (const char* name : {"ListView", Bar(), "lblDestFile"})
            EXPECT_FALSE(Get<QWidget>(name).accessibleName().isEmpty()) << name;
    }
    const int heightBefore = List().height();
    window_->resize(window_->size() + QSize(400, 200));
    EXPECT_EQ(List().height(), heightBefore + 200);
    const double room = List().viewport()->width();
    constexpr double kShares[] = {0.30, 0.25, 0.15, 0.20};
    for (int column = 0; column < 4; ++column)
        EXPECT_NEAR(List().columnWidth(column) / room, kShares[column], 0.01) << column;
    // A column that the user has widened stays so.
    List().setColumnWidth(0, static_cast<int>(room / 2));
    window_->resize(window_->width() - 200, window_->height());
    EXPECT_NEAR(List().columnWidth(0) / static_cast<double>(List().viewport()->width()), 0.5, 0.01);
    QTest::keyClick(window_.get(), Qt::Key_Escape);
    EXPECT_FALSE(window_->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryArchiveWindow,
                         testing::Values(Format::kZip, Format::kCab, Format::kRar), FormatName);

/// What RAR archives do not do: with them the program ends.
class ReadableOrEmpty : public EveryArchiveWindow {};

TEST_P(ReadableOrEmpty, WhatIsNoArchiveLeavesAnEmptyListThatSaysSo) {
    dir_.MakeFile("text" + Extension(F()), "not an archive");
    Open(F(), {"text" + Extension(F())});
    EXPECT_EQ(RowCount(), 0);
    Check("chkAll");
    Press("cmdExtract");
    EXPECT_EQ(messages_.Ids(), Ids{IDS_NOTHING_SELECTED});
    const QImage told = List().viewport()->grab().toImage();
    const QRgb background = told.pixel(0, told.height() - 1);
    int written = 0;
    for (int x = 0; x < told.width(); ++x)
        for (int y = 0; y < told.height(); ++y)
            written += told.pixel(x, y) != background;
    EXPECT_GT(written, 100);
}

INSTANTIATE_TEST_SUITE_P(Formats, ReadableOrEmpty, testing::Values(Format::kZip, Format::kCab), FormatName);

/// What only cabinets and RAR archives do: several of them stand in one list.
class SeveralArchives : public EveryArchiveWindow {};

TEST_P(SeveralArchives, StandInOneListAndAreJudgedOneByOne) {
    const Texts files{Make(F(), "one/A", {{"a1", "1"}, {"a2", "2"}}),
                      Make(F(), "two/B", {{"b1", "3"}, {"b2", "4"}})};
    Open(F(), files);
    EXPECT_EQ(Column(6), (Texts{tests::TestDir::Path(files[0]), tests::TestDir::Path(files[0]),
                                tests::TestDir::Path(files[1]), tests::TestDir::Path(files[1])}));
    EXPECT_EQ(SelectedNames(), Texts{"a1"});
    Check("chkDelete");
    Select({"b2", "a1", "a2"});
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), Ids{IDS_NOT_ALL_EXTRACTED});
    EXPECT_FALSE(dir_.Exists(files[0]));
    EXPECT_TRUE(dir_.Exists(files[1]));
    EXPECT_EQ(dir_.Read("one/" + In("A", "a2")), "2");
    EXPECT_EQ(dir_.Read("two/" + In("B", "b2")), "4");
    EXPECT_FALSE(dir_.Exists("two/" + In("B", "b1")));
}

TEST_P(SeveralArchives, MayBeOneGivenTwice) {
    const std::string file = Make(F(), "x", {{"a", "1"}, {"b", "2"}});
    Open(F(), {file, file});
    EXPECT_EQ(RowCount(), 4);
    Check("chkAll");
    Check("chkDelete");
    Press("cmdExtractSame");
    EXPECT_TRUE(messages_.Ids().empty());
    EXPECT_FALSE(dir_.Exists(file));
    EXPECT_EQ(dir_.Read(In("x", "b")), "2");
}

INSTANTIATE_TEST_SUITE_P(Formats, SeveralArchives, testing::Values(Format::kCab, Format::kRar), FormatName);

} // namespace
