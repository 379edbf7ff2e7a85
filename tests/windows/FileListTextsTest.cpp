#include "explorer/FileListTexts.h"

#include "explorer/DriveSpaceFigures.h"

#include <gtest/gtest.h>

using namespace explorer;

TEST(FileListTexts, SizesAreWholeKilobytesWithHalvesUpAndNeverBelowOne) {
    EXPECT_EQ(FileSizeText(0, false), "0 KB");
    EXPECT_EQ(FileSizeText(1, false), "1 KB");
    EXPECT_EQ(FileSizeText(1023, false), "1 KB");
    EXPECT_EQ(FileSizeText(1024, false), "1 KB");
    EXPECT_EQ(FileSizeText(1535, false), "1 KB");
    EXPECT_EQ(FileSizeText(1536, false), "2 KB");
    EXPECT_EQ(FileSizeText(1048576, false), "1024 KB");
    EXPECT_EQ(FileSizeText(3ULL << 30, false), "3145728 KB");
    EXPECT_EQ(FileSizeText(~0ULL, false), "18014398509481984 KB");
    EXPECT_EQ(FileSizeText(4096, true), "");
}

TEST(FileListTexts, SizeSortKeysHaveTwentyOneDigits) {
    EXPECT_EQ(SizeSortText(1536), "000000000000000001536");
    EXPECT_EQ(SizeSortText(~0ULL), "018446744073709551615");
}

TEST(FileListTexts, TimesStandOnTheTwelveHourClock) {
    const auto text = [](platform::SystemTime time) { return ModifiedText(PackTime(time)); };
    EXPECT_EQ(text({2007, 3, 5, 14, 7, 9}), "05/03/2007 2:07:09 PM");
    EXPECT_EQ(text({2007, 12, 31, 0, 0, 0}), "31/12/2007 12:00:00 AM");
    EXPECT_EQ(text({2007, 12, 31, 0, 30, 0}), "31/12/2007 12:30:00 AM");
    EXPECT_EQ(text({1999, 1, 1, 11, 59, 59}), "01/01/1999 11:59:59 AM");
    EXPECT_EQ(text({1999, 1, 1, 12, 0, 0}), "01/01/1999 12:00:00 PM");
    EXPECT_EQ(text({2107, 1, 1, 23, 0, 1}), "01/01/2107 11:00:01 PM");
    EXPECT_EQ(DateSortText(PackTime({2007, 3, 5, 14, 7, 9})), "20070305140709");
}

TEST(FileListTexts, NamesSortFoldersFirst) {
    EXPECT_EQ(NameSortText("docs", true), "00docs");
    EXPECT_EQ(NameSortText("docs", false), "11docs");
}

namespace {

DriveSpaceFigures Figures(std::uint64_t free, std::uint64_t total) {
    return {total, free};
}

} // namespace

TEST(DriveSpace, FiguresRoundDownToWholeMultiplesOfTheClusterSize) {
    const DriveSpaceFigures figures = FiguresOf({8, 512, 3 * 1024 + 1023, 10 * 1024 + 1});
    EXPECT_EQ(figures.freeMegabytes, 12U);
    EXPECT_EQ(figures.totalMegabytes, 40U);
    // A drive of 64 TB does not overflow.
    EXPECT_EQ(FiguresOf({64, 512, 1ULL << 31, 1ULL << 31}).totalMegabytes, 64U << 20);
}

TEST(DriveSpace, PercentagesHaveAtMostTwoDecimals) {
    EXPECT_EQ(DriveSpaceText(Figures(1234, 2712)), "1234MB (45.5%)");
    EXPECT_EQ(DriveSpaceText(Figures(1, 2)), "1MB (50%)");
    EXPECT_EQ(DriveSpaceText(Figures(1, 200)), "1MB (0.5%)");
    EXPECT_EQ(DriveSpaceText(Figures(1, 3)), "1MB (33.33%)");
    EXPECT_EQ(DriveSpaceText(Figures(2, 3)), "2MB (66.67%)");
    EXPECT_EQ(DriveSpaceText(Figures(1, 1'000'000)), "1MB (0%)");
    EXPECT_EQ(DriveSpaceText(Figures(7, 7)), "7MB (100%)");
    EXPECT_EQ(DriveSpaceText(Figures(0, 0)), std::nullopt);
}
