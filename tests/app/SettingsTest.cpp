#include "app/SettingsFile.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using tests::TestDir;

TEST(Settings, ReadsValuesAndFallbacksOfAnyLengthWhole) {
    const TestDir dir;
    // Around each size of the growing buffer, where a value may seem to have been cut.
    for (const std::size_t length :
         {0U, 1U, 253U, 254U, 255U, 256U, 257U, 510U, 511U, 512U, 1023U, 70'000U}) {
        const std::string value(length, 'v');
        const std::string file =
            dir.MakeFile("some.ini", "[Part]\r\nBefore=1\r\nKey=" + value + "\r\nAfter=2\r\n");
        EXPECT_EQ(app::ReadIni("Part", "Key", "other", file), value) << length;
        EXPECT_EQ(app::ReadIni("Part", "Other", value, file), value) << length;
        EXPECT_EQ(app::ReadIni("Part", "Key", value, TestDir::Path("none.ini")), value) << length;
    }
}

TEST(Settings, WritingFailsSilently) {
    const TestDir dir;
    const std::string file = dir.MakeFile("some.ini", "[Size]\r\nHeight=1\r\n");
    EXPECT_TRUE(app::WriteIni("Size", "Height", "12315", file));
    EXPECT_EQ(app::ReadIni("Size", "Height", "", file), "12315");
    EXPECT_TRUE(app::WriteIni("Size", "Height", "1", dir.MakeFolder("folder.ini")));
    EXPECT_TRUE(app::WriteIni("Size", "Height", "1", "Q:\\no\\drive.ini"));
}

} // namespace
