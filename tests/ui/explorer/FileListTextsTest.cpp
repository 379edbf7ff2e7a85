#include "ui/explorer/list/FileListTexts.h"

#include "ui/explorer/window/DriveSpaceFigures.h"

#include <gtest/gtest.h>

TEST(FileListTexts, SizesAreWholeKilobytesWithHalvesUpAndNeverBelowOne) {
    const std::pair<std::uint64_t, const char*> cases[] = {{0, "0 KB"},
                                                           {1, "1 KB"},
                                                           {1023, "1 KB"},
                                                           {1535, "1 KB"},
                                                           {1536, "2 KB"},
                                                           {1048576, "1024 KB"},
                                                           {3ULL << 30, "3145728 KB"},
                                                           {~0ULL, "18014398509481984 KB"}};
    for (const auto& [size, text] : cases)
        EXPECT_EQ(ui::FileSizeText(size, false), text);
    EXPECT_EQ(ui::FileSizeText(4096, true), "");
}

TEST(FileListTexts, TimesStandOnTheTwelveHourClock) {
    const auto text = [](platform::SystemTime time) { return ui::ModifiedText(ui::PackTime(time)); };
    EXPECT_EQ(text({2007, 3, 5, 14, 7, 9}), "05/03/2007 2:07:09 PM");
    EXPECT_EQ(text({2007, 12, 31, 0, 0, 0}), "31/12/2007 12:00:00 AM");
    EXPECT_EQ(text({2007, 12, 31, 0, 30, 0}), "31/12/2007 12:30:00 AM");
    EXPECT_EQ(text({1999, 1, 1, 11, 59, 59}), "01/01/1999 11:59:59 AM");
    EXPECT_EQ(text({1999, 1, 1, 12, 0, 0}), "01/01/1999 12:00:00 PM");
    EXPECT_EQ(text({2107, 1, 1, 23, 0, 1}), "01/01/2107 11:00:01 PM");
}

TEST(DriveSpace, FiguresRoundDownToWholeMultiplesOfTheClusterSize) {
    const ui::DriveSpaceFigures figures = ui::FiguresOf({8, 512, 3 * 1024 + 1023, 10 * 1024 + 1});
    EXPECT_EQ(figures.freeMegabytes, 12U);
    EXPECT_EQ(figures.totalMegabytes, 40U);
    // A drive of 64 TB does not overflow.
    EXPECT_EQ(ui::FiguresOf({64, 512, 1ULL << 31, 1ULL << 31}).totalMegabytes, 64U << 20);
}

TEST(DriveSpace, PercentagesHaveAtMostTwoDecimals) {
    const std::pair<ui::DriveSpaceFigures, const char*> cases[] = {// total and free megabytes
                                                                   {{2712, 1234}, "1234MB (45.5%)"},
                                                                   {{2, 1}, "1MB (50%)"},
                                                                   {{200, 1}, "1MB (0.5%)"},
                                                                   {{3, 1}, "1MB (33.33%)"},
                                                                   {{3, 2}, "2MB (66.67%)"},
                                                                   {{1'000'000, 1}, "1MB (0%)"},
                                                                   {{7, 7}, "7MB (100%)"}};
    for (const auto& [figures, text] : cases)
        EXPECT_EQ(ui::DriveSpaceText(figures), text);
    EXPECT_EQ(ui::DriveSpaceText({0, 0}), std::nullopt);
}
