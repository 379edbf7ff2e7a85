#include "base/Letters.h"

#include <gtest/gtest.h>

namespace {

using namespace base;

TEST(Letters, MapsOneLetterToOneLetter) {
    EXPECT_EQ(base::ToUpper("straße é я ÿ ǆ 日本 \U00010428"), "STRAßE É Я Ÿ Ǆ 日本 \U00010400");
    EXPECT_EQ(base::ToLower("STRASSE É Я Ÿ Ǆ İ"), "strasse é я ÿ ǆ i");
    EXPECT_EQ(base::ToUpper("a\xFF!b\xC3"), "A\xFF!B\xC3") << "bytes that are not UTF-8 stay";
    EXPECT_EQ(base::ToLower("\xED\xA0\x80X"), "\xED\xA0\x80x") << "a surrogate is not text";
}

TEST(Letters, ComparesByCaseFolding) {
    EXPECT_TRUE(base::EqualsNoCase("ΣΑΣ", "σας")) << "both small sigmas";
    EXPECT_TRUE(base::EqualsNoCase("\u212A", "k")) << "the Kelvin sign, of another length";
    EXPECT_TRUE(base::EqualsNoCase("ẞ", "ß"));
    EXPECT_FALSE(base::EqualsNoCase("ı", "i")) << "the dotless i is a letter of its own";
    EXPECT_FALSE(base::EqualsNoCase("İ", "i"));
    EXPECT_TRUE(base::EqualsNoCase("A\xFF", "a\xFF"));
    EXPECT_FALSE(base::EqualsNoCase("A\xFF", "a\xFE"));
    EXPECT_LT(base::CompareNoCase("apple", "Banana"), 0);
    EXPECT_GT(base::CompareNoCase("b", "A"), 0);
    EXPECT_LT(base::CompareNoCase("ab", "ABC"), 0);
    EXPECT_LT(base::CompareNoCase("Zoo", "älter"), 0);
    EXPECT_EQ(base::CompareNoCase("", ""), 0);
}

TEST(Letters, FindsPrefixesAndSuffixes) {
    EXPECT_TRUE(base::EndsWithNoCase("disk1.CAB", ".cab"));
    EXPECT_FALSE(base::EndsWithNoCase("cab", ".cab"));
    EXPECT_TRUE(base::EndsWithNoCase("x", ""));
    EXPECT_TRUE(base::EndsWithNoCase("MENÜ", "nü"));
    EXPECT_TRUE(base::EndsWithNoCase("300\u212A", "0k"));
    EXPECT_FALSE(base::EndsWithNoCase("\xC3", "\xA9")) << "half a letter is no suffix";
    EXPECT_TRUE(base::StartsWithNoCase("\u212Aelvin", "KEL"));
    EXPECT_FALSE(base::StartsWithNoCase("Ke", "kel"));
    EXPECT_TRUE(base::StartsWithNoCase("anything", ""));
}

TEST(Letters, ReplacesEveryOccurrence) {
    EXPECT_EQ(base::ReplaceNoCase("%UserName, %USERNAME!%username", "%username", "Ann"), "Ann, Ann!Ann");
    EXPECT_EQ(base::ReplaceNoCase("aaa", "aa", "b"), "ba");
    EXPECT_EQ(base::ReplaceNoCase("%s", "%S", "100%s"), "100%s") << "what was put in is not looked at again";
    EXPECT_EQ(base::ReplaceNoCase("\u212A-k", "K", "x"), "x-x");
    EXPECT_EQ(base::ReplaceNoCase("", "a", "b"), "");
}

} // namespace
