#include "platform/DropFiles.h"

#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using platform::BuildDropFiles;
using Paths = std::vector<std::string>;
using namespace std::string_literals;

Paths Parse(std::string_view block) {
    return platform::ParseDropFiles({reinterpret_cast<const std::uint8_t*>(block.data()), block.size()});
}

const std::string kHeader = "\x14\0\0\0"s + std::string(16, '\0');
const std::string kWideHeader = "\x14\0\0\0"s + std::string(12, '\0') + "\x01\0\0\0"s;

std::string Wide(std::u16string_view units) {
    std::string bytes;
    for (const char16_t unit : units) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

TEST(DropFiles, BlockByteByByte) {
    EXPECT_EQ(BuildDropFiles({"E:\\a.txt", "E:\\Docs"}), kHeader + "E:\\a.txt\0E:\\Docs\0\0"s);
    EXPECT_EQ(BuildDropFiles({}), kHeader + "\0"s);
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    EXPECT_EQ(BuildDropFiles({"E:\\Käse"}), kHeader + "E:\\K\xE4se\0\0"s);
    EXPECT_EQ(Parse(BuildDropFiles({"E:\\Käse", "E:\\b"})), (Paths{"E:\\Käse", "E:\\b"}));
}

TEST(DropFiles, ListsOfOtherPrograms) {
    EXPECT_EQ(Parse(kWideHeader + Wide(u"E:\\日本\0E:\\\U0001F600\0\0"s)),
              (Paths{"E:\\日本", "E:\\\U0001F600"}));
    // Names may lie further back, and anything may follow their end.
    EXPECT_EQ(Parse("\x18\0\0\0"s + std::string(16, '\0') + "????E:\\a\0\0E:\\b\0"s), (Paths{"E:\\a"}));
    EXPECT_EQ(Parse(kWideHeader + Wide(u"E:\\a\xD800\0\0"s)), (Paths{"E:\\a\xEF\xBF\xBD"}));
}

TEST(DropFiles, DamagedLists) {
    EXPECT_EQ(Parse(""), Paths{});
    EXPECT_EQ(Parse(kHeader.substr(0, 19)), Paths{});
    EXPECT_EQ(Parse(kHeader), Paths{});
    for (const char offset : {'\0', '\x13', '\x20', '\xFF'})
        EXPECT_EQ(Parse(std::string(1, offset) + std::string(19, '\0') + "E:\\a\0\0"s), Paths{})
            << int(offset);
    EXPECT_EQ(Parse("\xFF\xFF\xFF\xFF"s + std::string(16, '\0') + "E:\\a\0\0"s), Paths{});
    // A name that may have been cut would be another file's.
    EXPECT_EQ(Parse(kHeader + "E:\\a\0E:\\b"s), (Paths{"E:\\a"}));
    EXPECT_EQ(Parse(kWideHeader + Wide(u"E:\\a\0E:\\b"s) + "x"), (Paths{"E:\\a"}));
}

TEST(DropFiles, AMillionNames) {
    const Paths paths(1'000'000, "E:\\n");
    EXPECT_EQ(Parse(BuildDropFiles(paths)), paths);
}

} // namespace
