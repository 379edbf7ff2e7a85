#include "base/ProfileText.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using namespace base;
using namespace std::string_literals;

std::string Get(std::string_view content, std::string_view section, std::string_view key) {
    return std::string(FindProfileValue(content, section, key).value_or("none"));
}

TEST(ProfileText, FindsValues) {
    const std::string content =
        "stray=0\r\n[Setting]\r\nLanguage=0409\r\n; Charset=9\r\n  Charset \t= 204  \r\n"
        "Empty=\r\nnovalue\r\n\r\n [ Size ] ; note\r\nHeight=\"12 315\"\r\nQuote='a\r\n"
        "Both='\"b\"'\r\nEquals=a=b\r\nHÖHE=1";
    const std::array<const char*, 3> cases[] = {
        {"Setting", "Language", "0409"}, {"SETTING", "language", "0409"},
        {"Setting", "Charset", "204"},   {"Setting", "Empty", ""},
        {"Setting", "novalue", "none"},  {"Setting", "stray", "none"},
        {"Setting", "Height", "none"},   {"size", "Height", "12 315"},
        {"Size", "Quote", "'a"},         {"Size", "Both", "\"b\""},
        {"Size", "Equals", "a=b"},       {"Size", "höhe", "1"},
        {"Nowhere", "Height", "none"},   {"", "", "none"}};
    for (const auto& [section, key, value] : cases)
        EXPECT_EQ(Get(content, section, key), value) << section << ", " << key;
}

TEST(ProfileText, OtherFormsOfTheText) {
    const std::string unix = "\xEF\xBB\xBF[S]\nK=v\n[T]\nK=w\n[S]\nK=late\nOnly=x\n[t\nK=y";
    EXPECT_EQ(Get(unix, "S", "K"), "v");
    EXPECT_EQ(Get(unix, "T", "K"), "w");
    EXPECT_EQ(Get(unix, "S", "Only"), "none") << "the first section of a name is the one that counts";
    const std::string odd = "[A]\r\nK=1\r\nK=2\r\n\r\r\nL=3\r\nN=a\0b\r\n\xF6=\xF6\r\nM=\xF6"s;
    EXPECT_EQ(Get(odd, "A", "K"), "1");
    EXPECT_EQ(Get(odd, "A", "L"), "3");
    EXPECT_EQ(Get(odd, "A", "N"), "a\0b"s);
    EXPECT_EQ(Get(odd, "A", "M"), "\xF6");
    EXPECT_EQ(Get("", "A", "K"), "none");
}

TEST(ProfileText, AValueSetReplacesOnlyItself) {
    EXPECT_EQ(SetProfileValue(
                  "; m\xEFne\r\n\r\n[Size]\r\nHeight = 1  \r\nWidth=2\r\nHeight=9\r\n\r\n[O]\r\nx\0y=1"s,
                  "SIZE", "HEIGHT", "8040"),
              "; m\xEFne\r\n\r\n[Size]\r\nHeight =8040\r\nWidth=2\r\nHeight=9\r\n\r\n[O]\r\nx\0y=1"s);
}

TEST(ProfileText, NewKeysAndSections) {
    std::string text = SetProfileValue("", "A", "K", "1\r\n[B]\r\nK=2");
    EXPECT_EQ(text, "[A]\r\nK=1\r\n") << "a value cannot add lines";
    text = SetProfileValue(SetProfileValue(text, "B", "K", "2"), "a", "L", "3");
    EXPECT_EQ(text, "[A]\r\nK=1\r\nL=3\r\n[B]\r\nK=2\r\n");
    text = SetProfileValue(SetProfileValue("[A]\nK=1\n\n[B]\nK=2", "A", "L", "3"), "B", "L", "4");
    EXPECT_EQ(text, "[A]\nK=1\nL=3\n\n[B]\nK=2\nL=4\n") << "the text's own line ends";
}

TEST(ProfileText, ALargeTextIsReadInReasonableTime) {
    std::string content;
    for (int i = 0; content.size() < 1'000'000; ++i)
        content += "[S" + std::to_string(i) + "]\r\nKey=" + std::to_string(i) + "\r\n";
    content += "[Last]\r\nK=" + std::string(3000, 'v');
    EXPECT_EQ(Get(content, "Last", "K"), std::string(3000, 'v'));
    EXPECT_EQ(Get(content, "S40000", "Key"), "40000");
}

} // namespace
