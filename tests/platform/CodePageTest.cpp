#include "platform/CodePage.h"

#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using namespace std::string_literals;
using tests::ScopedVariable;

TEST(CodePage, Utf8IsTheUsualPage) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");
    EXPECT_EQ(AnsiCodePage(), 65001);
    EXPECT_EQ(AnsiToUtf8("größe 日本"), "größe 日本");
    EXPECT_EQ(Utf8ToAnsi("größe 日本"), "größe 日本");
    EXPECT_EQ(AnsiToUtf8("a\0b"s), "a\0b"s);
    EXPECT_EQ(Utf8ToAnsi("a\xFFz"), "a?z");
}

TEST(CodePage, BytesThatAreNotUtf8AreReadByTheCharset) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");

    struct Case {
        int charset;
        std::string bytes;
        std::string text;
    };

    const Case cases[] = {
        {0, "gr\xF6\xDF"s + "e", "größe"},
        {134, "\xD6\xD0\xCE\xC4", "中文"},
        {136, "\xA4\xA4\xA4\xE5", "中文"},
        {128, "\x83\x65\x83\x58\x83\x67", "テスト"},
        {129, "\xC7\xD1\xB1\xDB", "한글"},
        {161, "\xE1\xE2", "αβ"},
        {162, "\xFD\xFE", "ış"},
        {177, "\xF9\xEC", "של"},
        {178, "\xC7\xC8", "اب"},
        {186, "\xE0\xFE", "ąž"},
        {204, "\xCF\xF0", "Пр"},
        {222, "\xA1\xA2", "กข"},
        {238, "\xB9\xE6", "ąć"},
        {163, "\xD0\xF0", "Đđ"},
        {255, "\xE4", "ä"},
    };
    for (const Case& c : cases) {
        SetLegacyCharset(c.charset);
        EXPECT_EQ(AnsiToUtf8(c.bytes), c.text) << "charset " << c.charset;
    }
    SetLegacyCharset(0);
}

TEST(CodePage, OverrideWorksBothWays) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    EXPECT_EQ(AnsiCodePage(), 1252);
    EXPECT_EQ(AnsiToUtf8("\x80\xE4"), "€ä");
    EXPECT_EQ(AnsiToUtf8("x\x81y"), "x?y") << "a byte without a meaning";
    EXPECT_EQ(Utf8ToAnsi("€ä日z"), "\x80\xE4?z");
}

TEST(CodePage, EveryByteOfEveryPageGivesText) {
    std::string all;
    for (int i = 0; i < 256; ++i)
        all.push_back(static_cast<char>(static_cast<unsigned char>(i)));
    for (const char* number : {"874", "932", "936", "949", "950", "1250", "1251", "1252", "1253", "1254",
                               "1255", "1256", "1257", "1258", "20866", "28605", "4711"}) {
        const ScopedVariable page("PELLARION_ANSI_CODEPAGE", number);
        const std::string text = AnsiToUtf8(all);
        EXPECT_EQ(text.substr(0, 128), all.substr(0, 128)) << number << ": the ASCII half is common to all";
        {
            const ScopedVariable utf8("PELLARION_ANSI_CODEPAGE", "65001");
        }
        EXPECT_GT(Utf8ToAnsi(text).size(), 128U) << number;
    }
}

TEST(CodePage, DamagedDoubleBytesCostOneCharacterEach) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "932");
    EXPECT_EQ(AnsiToUtf8("\x83\x65\x83"), "テ?") << "cut at the end";
    EXPECT_EQ(AnsiToUtf8("\x83\x20\x83\x65"), "? テ") << "the blank is not swallowed";
    EXPECT_EQ(Utf8ToAnsi("テ\U0001F600z"), "\x83\x65?z");
}

TEST(CodePage, CutsBetweenCharacters) {
    {
        const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");
        EXPECT_EQ(CutToAnsiBytes("abc", 2), "ab");
        EXPECT_EQ(CutToAnsiBytes("aä", 2), "a");
        EXPECT_EQ(CutToAnsiBytes("aä", 3), "aä");
    }
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    EXPECT_EQ(CutToAnsiBytes("aäöü", 3), "aäö") << "one byte each in this page";
}

} // namespace
