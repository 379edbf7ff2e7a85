#include "platform/CodePage.h"

#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using namespace std::string_literals;
using tests::ScopedVariable;

TEST(CodePage, ReadsStoredBytesAndWritesThem) {
    struct Case {
        const char* page;
        std::string bytes;
        std::string text;
        bool isWritten = false; ///< else read
    };

    const Case cases[] = {
        {"65001", "größe 日本", "größe 日本"},
        {"65001", "ä\0b"s, "ä\0b"s},
        {"1252", "\x80\xE4", "€ä"},
        {"1252", "x\x81y", "x?y"}, // a byte without a meaning
        {"932", "\x83\x65\x83", "テ?"},
        {"932", "\x83\x20\x83\x65", "? テ"}, // the blank is not swallowed
        {"65001", "größe 日本", "größe 日本", true},
        {"65001", "a?z", "a\xFFz", true},
        {"1252", "\x80\xE4?z", "€ä日z", true},
        {"932", "\x83\x65?z", "テ\U0001F600z", true},
    };
    for (const auto& [page, bytes, text, isWritten] : cases) {
        const ScopedVariable set("PELLARION_ANSI_CODEPAGE", page);
        EXPECT_EQ(std::to_string(AnsiCodePage()), page);
        EXPECT_EQ(isWritten ? Utf8ToAnsi(text) : AnsiToUtf8(bytes), isWritten ? bytes : text);
    }
}

TEST(CodePage, BytesThatAreNotUtf8AreReadByTheCharset) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");
    const std::tuple<int, std::string, std::string> cases[] = {{0, "gr\xF6\xDF!", "größ!"},
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
                                                               {255, "\xE4", "ä"}};
    for (const auto& [charset, bytes, text] : cases) {
        SetLegacyCharset(charset);
        EXPECT_EQ(AnsiToUtf8(bytes), text) << "charset " << charset;
    }
    SetLegacyCharset(0);
}

TEST(CodePage, EveryByteOfEveryPageGivesText) {
    std::string all;
    for (int i = 0; i < 256; ++i)
        all.push_back(static_cast<char>(static_cast<unsigned char>(i)));
    for (const char* number : {"874", "932", "936", "949", "950", "1250", "1251", "1252", "1253", "1254",
                               "1255", "1256", "1257", "1258", "20866", "28605", "4711"}) {
        std::string text;
        {
            const ScopedVariable page("PELLARION_ANSI_CODEPAGE", number);
            text = AnsiToUtf8(all);
            EXPECT_GT(Utf8ToAnsi(text).size(), 128U) << number;
        }
        EXPECT_EQ(text.substr(0, 128), all.substr(0, 128)) << number << ": the ASCII half is common to all";
        const ScopedVariable utf8("PELLARION_ANSI_CODEPAGE", "65001");
        EXPECT_EQ(Utf8ToAnsi(text), text) << number << " gave something that is not UTF-8";
    }
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
