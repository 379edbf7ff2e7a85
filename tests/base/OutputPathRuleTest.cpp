#include "base/OutputPathRule.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace base {
namespace {

using namespace std::string_view_literals;

TEST(OutputPathRuleTest, OrdinaryNamesPass) {
    for (const auto name : {"a"sv,           "a/b.txt"sv, "a\\b/c"sv, "Docs/"sv, ".hidden"sv,
                            "...a"sv,        "a..b"sv,    " a"sv,     "./a"sv,   "a/./b"sv,
                            "console"sv,     "com"sv,     "com0"sv,   "com10"sv, "lpt.1"sv,
                            "nul1"sv,        "anul"sv,    "nu"sv,     "CONIN"sv, "caf\u00E9/\u65E5\u672C"sv,
                            "a+b,c;d=e[f]"sv})
        EXPECT_TRUE(StaysInTarget(name)) << name;
}

TEST(OutputPathRuleTest, NamesThatLeaveTheTargetAreRefused) {
    for (const auto name :
         {"../a"sv, "a/../../b"sv, "a\\..\\b"sv, ".."sv, "a/.."sv, "/a"sv, "\\a"sv, "\\\\server\\share\\a"sv,
          "//a"sv, "C:a"sv, "C:\\a"sv, "c:/a"sv, "a:stream"sv, "a/b:c"sv, "./../a"sv, ":"sv})
        EXPECT_FALSE(StaysInTarget(name)) << name;
}

TEST(OutputPathRuleTest, NamesThatOneSystemWouldChangeAreRefused) {
    for (const auto name : {""sv, "a//b"sv,
                            "a/"
                            "\\b"sv,
                            "a//"sv, "a."sv, "a "sv, "a./b"sv, "a /b"sv, ".. /a"sv, ". /a"sv, "..."sv, " "sv,
                            "."sv, "a/."sv, "a\0b"sv, "\0"sv, "a\nb"sv, "a\x1F"sv, "a\x7F"sv})
        EXPECT_FALSE(StaysInTarget(name)) << name;
    EXPECT_FALSE(StaysInTarget(std::string(5000, 'a')));
    std::string deep;
    for (int i = 0; i < 30000; ++i)
        deep += "a/";
    EXPECT_FALSE(StaysInTarget(deep));
}

TEST(OutputPathRuleTest, DeviceNamesAreRefusedInAnyFolderAndCase) {
    for (const auto name :
         {"CON"sv, "nul"sv, "Prn.txt"sv, "aux.tar.gz"sv, "a/COM1"sv, "lpt9.x/b"sv, "conin$"sv,
          "CONOUT$.log"sv, "nul .txt"sv, "com\u00B9"sv, "LPT\u00B3.a"sv, "NUL/"sv})
        EXPECT_FALSE(StaysInTarget(name)) << name;
}

} // namespace
} // namespace base
