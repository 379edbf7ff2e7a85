#include "ZipWindowFixture.h"

#include <algorithm>

namespace {

using Texts = std::vector<std::string>;

class ZipWindowList : public ZipWindow {
  protected:
    void MakeMixed() {
        tests::MakeZip(dir_.Host("mixed.zip"), {{"Alpha.txt", std::string(999, 'a'), "2007-01-31 23:59:58"},
                                                {"docs/", "", "2021-01-05 08:00:00"},
                                                {"docs/b.txt", std::string(1000, 'b'), "2007-02-01 00:00:00"},
                                                {"empty.dat", "", "2007-02-01 14:07:08"}});
        tests::AddEncrypted(dir_.Host("mixed.zip"), "secret.txt", "geheim", "pw");
    }
};

TEST_F(ZipWindowList, ShowsEveryEntryInItsColumns) {
    MakeMixed();
    Open("mixed.zip");
    EXPECT_EQ(Column(0), (Texts{" Alpha.txt", " docs/", " docs/b.txt", " empty.dat", "+secret.txt"}));
    EXPECT_EQ(Column(2), (Texts{"999", "Directory Entry", "1000", "0", "6"}));
    EXPECT_EQ(Column(3), Texts(5));
    EXPECT_EQ(Column(4)[0], "20070131235958");
    EXPECT_EQ(Column(5)[2], "000000000000000001000");
    EXPECT_EQ(Column(5)[1], "000000000000000000000");
    EXPECT_EQ(Column(6), Texts(5, "E:\\mixed.zip"));
    EXPECT_EQ(Column(7)[4], "11secret.txt");
    for (int column = 0; column < List().model()->columnCount(); ++column)
        EXPECT_EQ(List().isColumnHidden(column), column >= 4) << column;
    EXPECT_TRUE(SelectedNames().empty());
    // A date alone for midnight, a time with seconds otherwise, and the year in full.
    EXPECT_EQ(Column(1)[2].find("00:00"), std::string::npos) << Column(1)[2];
    EXPECT_NE(Column(1)[3].find("07:08"), std::string::npos) << Column(1)[3];
    EXPECT_NE(Column(1)[3].find("2007"), std::string::npos) << Column(1)[3];
}

TEST_F(ZipWindowList, KeepsTheOrderOfTheArchiveUntilItIsSorted) {
    tests::MakeZip(dir_.Host("order.zip"), {{"c", "1"}, {"A", "1"}, {"b", "1"}});
    Open("order.zip");
    EXPECT_EQ(Column(0), (Texts{" c", " A", " b"}));
    // Equal keys leave the entries in that order, whichever way the list is turned.
    ClickHeader(0);
    ClickHeader(2);
    EXPECT_EQ(Column(0), (Texts{" c", " A", " b"}));
    ClickHeader(2);
    EXPECT_EQ(Column(0), (Texts{" c", " A", " b"}));
}

TEST_F(ZipWindowList, SortsByWhatAColumnMeansAndTurnsRoundOnTheSecondClick) {
    MakeMixed();
    Open("mixed.zip");
    ClickHeader(2);
    EXPECT_EQ(Column(2), (Texts{"Directory Entry", "0", "6", "999", "1000"}));
    ClickHeader(2);
    EXPECT_EQ(Column(2), (Texts{"1000", "999", "6", "Directory Entry", "0"}));
    ClickHeader(0);
    EXPECT_EQ(Column(7), (Texts{"11Alpha.txt", "11docs/", "11docs/b.txt", "11empty.dat", "11secret.txt"}));
    ClickHeader(1);
    Texts dates = Column(4);
    EXPECT_TRUE(std::is_sorted(dates.begin(), dates.end()));
    EXPECT_EQ(Column(0)[0], " Alpha.txt");
    ClickHeader(1);
    dates = Column(4);
    EXPECT_TRUE(std::is_sorted(dates.rbegin(), dates.rend()));
}

TEST_F(ZipWindowList, SelectionFollowsItsEntriesWhenTheListIsSorted) {
    MakeMixed();
    Open("mixed.zip");
    ClickRow("docs/b.txt");
    ClickRow("empty.dat", Qt::ControlModifier);
    ClickHeader(0);
    EXPECT_EQ(SelectedNames(), (Texts{"docs/b.txt", "empty.dat"}));
    ClickHeader(2);
    ClickHeader(2);
    EXPECT_EQ(SelectedNames(), (Texts{"docs/b.txt", "empty.dat"}));
    EXPECT_EQ(Column(0)[0], " docs/b.txt");
}

TEST_F(ZipWindowList, TheCheckBoxSelectsAndClearsAllRows) {
    MakeMixed();
    Open("mixed.zip");
    Check("chkAll");
    EXPECT_EQ(SelectedNames().size(), 5U);
    ClickHeader(1);
    EXPECT_EQ(SelectedNames().size(), 5U);
    Check("chkAll");
    EXPECT_TRUE(SelectedNames().empty());
}

TEST_F(ZipWindowList, TypingGoesToTheEntryOfThatName) {
    MakeMixed();
    Open("mixed.zip");
    QTest::keyClicks(&List(), QStringLiteral("Sec"));
    EXPECT_EQ(SelectedNames(), Texts{"secret.txt"});
}

TEST_F(ZipWindowList, AFileThatIsNoArchiveLeavesTheListEmptyAndExtractingSaysSo) {
    dir_.MakeFile("text.zip", "not an archive");
    Open("text.zip");
    EXPECT_EQ(List().model()->rowCount(), 0);
    Check("chkAll");
    Press("cmdExtract");
    Press("cmdExtractSame");
    EXPECT_EQ(messages_.Ids(), (Ids{524, 524}));
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(picker_.prompts.empty());
}

TEST_F(ZipWindowList, HoldsAsManyEntriesAsAnArchiveCan) {
    constexpr int kMany = 65535;
    std::vector<tests::ZipItem> items(kMany);
    for (int i = 0; i < kMany; ++i)
        items[static_cast<std::size_t>(i)].name = "f" + std::to_string(kMany - i);
    tests::MakeZip(dir_.Host("many.zip"), items);
    Open("many.zip");
    ASSERT_EQ(List().model()->rowCount(), kMany);
    ClickHeader(0);
    EXPECT_EQ(List().model()->index(0, 0).data(), QStringLiteral(" f1"));
    EXPECT_EQ(List().model()->index(1, 0).data(), QStringLiteral(" f10"));
    ClickRow("f40000");
    Press("cmdExtractSame");
    EXPECT_TRUE(Exists("f40000"));
    EXPECT_EQ(dir_.Count(), 2U);
    EXPECT_EQ(Percentage(), QStringLiteral("100%"));
}

} // namespace
