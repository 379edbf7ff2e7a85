#include "platform/ProfileStrings.h"

#include "platform/CodePage.h"
#include "support/TestDir.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::TestDir;
using namespace std::string_literals;

constexpr const char* kFile = "E:\\setting.ini";

std::string Get(std::string_view section, std::string_view key, std::string_view fallback = "none") {
    std::array<char, 4096> buffer;
    buffer.fill('#');
    const std::size_t length = GetProfileString(section, key, fallback, buffer, kFile);
    EXPECT_EQ(buffer.at(length), '\0');
    return {buffer.data(), length};
}

TEST(ProfileStrings, FindsValues) {
    const TestDir dir;
    dir.MakeFile("Setting.ini",
                 "stray=0\r\n[Setting]\r\nLanguage=0409\r\n; Charset=9\r\n  Charset \t= 204  \r\n"
                 "Empty=\r\nnovalue\r\n\r\n [ Size ] ; note\r\nHeight=\"12 315\"\r\nQuote='a\r\n"
                 "Both='\"b\"'\r\nEquals=a=b");
    const std::array<const char*, 3> cases[] = {{"Setting", "Language", "0409"},
                                                {"SETTING", "language", "0409"},
                                                {"Setting", "Charset", "204"},
                                                {"Setting", "Empty", ""},
                                                {"Setting", "novalue", "none"},
                                                {"Setting", "stray", "none"},
                                                {"Setting", "Height", "none"},
                                                {"size", "Height", "12 315"},
                                                {"Size", "Quote", "'a"},
                                                {"Size", "Both", "\"b\""},
                                                {"Size", "Equals", "a=b"},
                                                {"Nowhere", "Height", "none"},
                                                {"", "", "none"}};
    for (const auto& [section, key, value] : cases)
        EXPECT_EQ(Get(section, key), value) << section << ", " << key;
}

TEST(ProfileStrings, OtherFormsOfTheFile) {
    const TestDir dir;
    dir.MakeFile("setting.ini", "\xEF\xBB\xBF[S]\nK=v\n[T]\nK=w\n[S]\nK=late\nOnly=x\n[t\nK=y");
    EXPECT_EQ(Get("S", "K"), "v");
    EXPECT_EQ(Get("T", "K"), "w");
    EXPECT_EQ(Get("S", "Only"), "none") << "the first section of a name is the one that counts";
    dir.MakeFile("setting.ini", "[A]\r\nK=1\r\nK=2\r\n\r\r\nL=3\r\nN=a\0b\r\n"s);
    EXPECT_EQ(Get("A", "K"), "1");
    EXPECT_EQ(Get("A", "L"), "3");
    EXPECT_EQ(Get("A", "N"), "a\0b"s);
    dir.MakeFile("setting.ini", "");
    EXPECT_EQ(Get("A", "K"), "none");
    dir.MakeFile("setting.ini", "[A]\nName=J\xF6rg\n");
    EXPECT_EQ(Get("A", "Name"), "Jörg");
}

TEST(ProfileStrings, FilesThatCannotBeRead) {
    const TestDir dir;
    dir.MakeFolder("setting.ini");
    EXPECT_EQ(Get("A", "K", "x"), "x");
    for (const char* file : {kFile, "E:\\no\\setting.ini", "Q:\\setting.ini"})
        EXPECT_TRUE(WriteProfileString("A", "K", "v", file)) << file;
}

TEST(ProfileStrings, SmallBuffersCut) {
    const TestDir dir;
    dir.MakeFile("setting.ini", "[A]\nK=0123456789\n");
    std::array<char, 20> buffer{};
    const auto get = [&](std::size_t size) {
        return GetProfileString("A", "K", "x", std::span(buffer).first(size), kFile);
    };
    EXPECT_EQ(get(11), 10U);
    EXPECT_EQ(get(10), 9U);
    EXPECT_STREQ(buffer.data(), "012345678");
    EXPECT_EQ(get(1), 0U);
    EXPECT_STREQ(buffer.data(), "");
    EXPECT_EQ(get(0), 0U);
}

TEST(ProfileStrings, AValueWrittenReplacesOnlyItself) {
    const TestDir dir;
    const std::string before =
        "; mine\r\n\r\n[Size]\r\nHeight = 1  \r\nWidth=2\r\nHeight=9\r\n\r\n[Other]\r\nx\0y=1"s;
    dir.MakeFile("setting.ini", before);
    EXPECT_FALSE(WriteProfileString("SIZE", "HEIGHT", "8040", kFile));
    EXPECT_EQ(dir.Read("setting.ini"),
              "; mine\r\n\r\n[Size]\r\nHeight =8040\r\nWidth=2\r\nHeight=9\r\n\r\n[Other]\r\nx\0y=1"s);
    EXPECT_EQ(Get("Size", "Height"), "8040");
}

TEST(ProfileStrings, NewKeysSectionsAndFiles) {
    const TestDir dir;
    EXPECT_FALSE(WriteProfileString("A", "K", "1\r\n[B]\r\nK=2", kFile));
    EXPECT_EQ(dir.Read("setting.ini"), "[A]\r\nK=1\r\n") << "a value cannot add lines";
    EXPECT_FALSE(WriteProfileString("B", "K", "2", kFile));
    EXPECT_FALSE(WriteProfileString("a", "L", "3", kFile));
    EXPECT_EQ(dir.Read("setting.ini"), "[A]\r\nK=1\r\nL=3\r\n[B]\r\nK=2\r\n");
    dir.MakeFile("setting.ini", "[A]\nK=1\n\n[B]\nK=2");
    EXPECT_FALSE(WriteProfileString("A", "L", "3", kFile));
    EXPECT_FALSE(WriteProfileString("B", "L", "4", kFile));
    EXPECT_EQ(dir.Read("setting.ini"), "[A]\nK=1\nL=3\n\n[B]\nK=2\nL=4\n") << "the file's own line ends";
}

TEST(ProfileStrings, TextGoesThroughTheCodePage) {
    const TestDir dir;
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    EXPECT_FALSE(WriteProfileString("Größe", "Höhe", "ä日", kFile));
    EXPECT_EQ(dir.Read("setting.ini"), "[Gr\xF6\xDF"s + "e]\r\nH\xF6he=\xE4?\r\n");
    EXPECT_EQ(Get("GRÖßE", "HÖHE"), "ä?");
}

TEST(ProfileStrings, LargeFileIsReadInReasonableTime) {
    const TestDir dir;
    std::string content;
    for (int i = 0; content.size() < 1'000'000; ++i)
        content += "[S" + std::to_string(i) + "]\r\nKey=" + std::to_string(i) + "\r\n";
    dir.MakeFile("setting.ini", content + "[Last]\r\nK=" + std::string(3000, 'v'));
    EXPECT_EQ(Get("Last", "K"), std::string(3000, 'v'));
    EXPECT_EQ(Get("S40000", "Key"), "40000");
}

} // namespace
