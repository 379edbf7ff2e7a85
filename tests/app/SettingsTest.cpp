#include "app/core/inifile.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using tests::TestDir;

TEST(Settings, ReadsValuesOfAnyLengthWhole) {
    TestDir dir;
    // Around each size of the growing buffer, where a value may seem to have been cut.
    for (const std::size_t length :
         {0U, 1U, 253U, 254U, 255U, 256U, 257U, 510U, 511U, 512U, 1023U, 70'000U}) {
        const std::string value(length, 'v');
        const std::string file =
            dir.MakeFile("some.ini", "[Part]\r\nBefore=1\r\nKey=" + value + "\r\nAfter=2\r\n");
        EXPECT_EQ(app::ReadIni("Part", "Key", "other", file), value) << length;
    }
}

TEST(Settings, MissingThingsGiveTheFallbackWhole) {
    TestDir dir;
    const std::string file = dir.MakeFile("some.ini", "[Part]\r\nKey=value\r\nEmpty=\r\n");
    const std::string fallback(300, 'f');
    EXPECT_EQ(app::ReadIni("Part", "Other", fallback, file), fallback);
    EXPECT_EQ(app::ReadIni("Other", "Key", fallback, file), fallback);
    EXPECT_EQ(app::ReadIni("Part", "Key", fallback, TestDir::Path("none.ini")), fallback);
    EXPECT_EQ(app::ReadIni("PART", "kEY", fallback, file), "value");
    EXPECT_EQ(app::ReadIni("Part", "Empty", fallback, file), "");
}

TEST(Settings, WritingKeepsTheRestAndFailsSilently) {
    TestDir dir;
    const std::string file =
        dir.MakeFile("some.ini", "; mine\r\n[Size]\r\nHeight=1\r\n\r\n[Grid]\r\nColWidth0=2\r\n");
    EXPECT_TRUE(app::WriteIni("size", "height", "12315", file));
    EXPECT_TRUE(app::WriteIni("Size", "Width", "8955", file));
    EXPECT_EQ(app::ReadIni("Size", "Height", "", file), "12315");
    EXPECT_EQ(app::ReadIni("Size", "Width", "", file), "8955");
    EXPECT_EQ(app::ReadIni("Grid", "ColWidth0", "", file), "2");
    EXPECT_TRUE(dir.Read("some.ini")->starts_with("; mine\r\n"));

    dir.MakeFolder("folder.ini");
    EXPECT_TRUE(app::WriteIni("Size", "Height", "1", TestDir::Path("folder.ini")));
    EXPECT_TRUE(app::WriteIni("Size", "Height", "1", "Q:\\no\\drive.ini"));
}

} // namespace
