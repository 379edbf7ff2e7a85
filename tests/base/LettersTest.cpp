#include "base/Letters.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

TEST(Letters, MapsOneLetterToOneLetter) {
    EXPECT_EQ(ToUpper("straße é я ÿ ǆ 日本 \U00010428"), "STRAßE É Я Ÿ Ǆ 日本 \U00010400");
    EXPECT_EQ(ToLower("STRASSE É Я Ÿ Ǆ İ"), "strasse é я ÿ ǆ i");
    EXPECT_EQ(ToUpper("a\xFF!b\xC3"), "A\xFF!B\xC3") << "bytes that are not UTF-8 stay";
    EXPECT_EQ(ToLower("\xED\xA0\x80X"), "\xED\xA0\x80x") << "a surrogate is not text";
}

TEST(Letters, ComparesByCaseFolding) {
    EXPECT_TRUE(EqualsNoCase("ΣΑΣ", "σας")) << "both small sigmas";
    EXPECT_TRUE(EqualsNoCase("\u212A", "k")) << "the Kelvin sign, of another length";
    EXPECT_TRUE(EqualsNoCase("ẞ", "ß"));
    EXPECT_FALSE(EqualsNoCase("ı", "i")) << "the dotless i is a letter of its own";
    EXPECT_FALSE(EqualsNoCase("İ", "i"));
    EXPECT_TRUE(EqualsNoCase("A\xFF", "a\xFF"));
    EXPECT_FALSE(EqualsNoCase("A\xFF", "a\xFE"));
    EXPECT_LT(CompareNoCase("apple", "Banana"), 0);
    EXPECT_GT(CompareNoCase("b", "A"), 0);
    EXPECT_LT(CompareNoCase("ab", "ABC"), 0);
    EXPECT_LT(CompareNoCase("Zoo", "älter"), 0);
    EXPECT_EQ(CompareNoCase("", ""), 0);
}

TEST(Letters, FindsPrefixesAndSuffixes) {
    EXPECT_TRUE(EndsWithNoCase("disk1.CAB", ".cab"));
    EXPECT_FALSE(EndsWithNoCase("cab", ".cab"));
    EXPECT_TRUE(EndsWithNoCase("x", ""));
    EXPECT_TRUE(EndsWithNoCase("MENÜ", "nü"));
    EXPECT_TRUE(EndsWithNoCase("300\u212A", "0k"));
    EXPECT_FALSE(EndsWithNoCase("\xC3", "\xA9")) << "half a letter is no suffix";
    EXPECT_TRUE(StartsWithNoCase("\u212Aelvin", "KEL"));
    EXPECT_FALSE(StartsWithNoCase("Ke", "kel"));
    EXPECT_TRUE(StartsWithNoCase("anything", ""));
}

TEST(Letters, ReplacesEveryOccurrence) {
    EXPECT_EQ(ReplaceNoCase("%UserName, %USERNAME!%username", "%username", "Ann"), "Ann, Ann!Ann");
    EXPECT_EQ(ReplaceNoCase("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceNoCase("%s", "%S", "100%s"), "100%s") << "what was put in is not looked at again";
    EXPECT_EQ(ReplaceNoCase("\u212A-k", "K", "x"), "x-x");
    EXPECT_EQ(ReplaceNoCase("", "a", "b"), "");
}

} // namespace
