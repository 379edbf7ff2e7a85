#include "platform/ResourceLibrary.h"

#include "PeStringTable.h"
#include "support/PeBuilder.h"
#include "support/TestDir.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::PeBuilder;
using tests::TestDir;

constexpr const char* kPath = "E:\\lib.dll";

PeBuilder Sample(bool is64Bit = false) {
    PeBuilder builder;
    builder.is64Bit = is64Bit;
    builder.strings = {
        {0, u"zero"}, {15, u"fifteen"}, {16, u"sixteen"}, {302, u"Größe \u65E5"}, {65535, u"last"}};
    return builder;
}

std::unique_ptr<ResourceLibrary> LoadImage(const TestDir& dir, const std::string& image) {
    dir.MakeFile("lib.dll", image);
    SystemError error{99};
    auto library = ResourceLibrary::Load(kPath, error);
    if (library == nullptr) {
        EXPECT_EQ(error.code, kErrorBadExeFormat);
    } else {
        EXPECT_FALSE(error);
    }
    return library;
}

TEST(ResourceLibrary, FindsStringsInBothKindsOfImage) {
    const TestDir dir;
    for (const bool is64Bit : {false, true}) {
        PeBuilder builder = Sample(is64Bit);
        builder.language = is64Bit ? 0x0804 : 0x0409;
        const auto library = LoadImage(dir, builder.Build());
        ASSERT_NE(library, nullptr);
        EXPECT_EQ(library->LoadString(0), "zero");
        EXPECT_EQ(library->LoadString(15), "fifteen");
        EXPECT_EQ(library->LoadString(16), "sixteen");
        EXPECT_EQ(library->LoadString(302), "Größe 日");
        EXPECT_EQ(library->LoadString(65535), "last");
        EXPECT_EQ(library->LoadString(1), "") << "an empty place in a block";
        EXPECT_EQ(library->LoadString(100), "") << "no such block";
        EXPECT_EQ(library->LoadString(0xFFFFFFFF), "");
    }
}

TEST(ResourceLibrary, TextsOfAnyKind) {
    const TestDir dir;
    PeBuilder builder;
    builder.strings = {{1, u"\xD83D\xDE00"},
                       {2, u"a\xD83D"
                           u"b"},
                       {3, u"\xDE00"},
                       {4, std::u16string(u"a\0b", 3)},
                       {5, std::u16string(5000, u'x')}};
    const auto library = LoadImage(dir, builder.Build());
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library->LoadString(1), "\U0001F600");
    EXPECT_EQ(library->LoadString(2), "a\uFFFDb");
    EXPECT_EQ(library->LoadString(3), "\uFFFD");
    EXPECT_EQ(library->LoadString(4), std::string("a\0b", 3));
    EXPECT_EQ(library->LoadString(5), std::string(5000, 'x'));
}

TEST(ResourceLibrary, FileIsNotHeld) {
    const TestDir dir;
    const auto library = LoadImage(dir, Sample().Build());
    ASSERT_NE(library, nullptr);
    std::filesystem::resize_file(dir.Host("lib.dll"), 0);
    EXPECT_EQ(library->LoadString(16), "sixteen");
}

TEST(ResourceLibrary, WhatIsNoLibrary) {
    const TestDir dir;
    EXPECT_EQ(LoadImage(dir, ""), nullptr);
    EXPECT_EQ(LoadImage(dir, "MZ"), nullptr);
    EXPECT_EQ(LoadImage(dir, std::string(5000, '\0')), nullptr);
    EXPECT_EQ(LoadImage(dir, std::string((16 << 20) + 1, 'x')), nullptr) << "no text library is as large";
    SystemError error;
    EXPECT_EQ(ResourceLibrary::Load("E:\\none.dll", error), nullptr);
    EXPECT_EQ(error.code, kErrorFileNotFound);
    EXPECT_EQ(ResourceLibrary::Load("E:\\", error), nullptr);
    EXPECT_EQ(error.code, kErrorAccessDenied);
}

// The reader behind the library, without a file for each damaged image.

TEST(PeStringTable, CutAnywhere) {
    const std::string image = Sample().Build();
    for (std::size_t size = 0; size < image.size(); ++size)
        EXPECT_FALSE(PeStringTable::Read(image.substr(0, size))) << size;
    EXPECT_TRUE(PeStringTable::Read(image));
}

TEST(PeStringTable, AnyByteDamaged) {
    const std::string image = Sample(true).Build();
    for (std::size_t at = 0; at < image.size(); ++at) {
        for (const int flip : {0x01, 0x02, 0x10, 0x80, 0xFF}) {
            std::string damaged = image;
            damaged[at] = static_cast<char>(damaged[at] ^ flip);
            const auto table = PeStringTable::Read(damaged);
            for (std::uint32_t id = 0; table && id < 32; ++id)
                EXPECT_LE(table->Find(id).size(), image.size() * 2);
        }
    }
}

TEST(ResourceLibrary, LoopsAndOffsetsOutside) {
    const TestDir dir;
    PeBuilder builder = Sample();
    const std::string image = builder.Build();
    const std::size_t root = builder.ResourcesAt();
    std::string damaged = image;
    PeBuilder::Set32(damaged, root + 20, 0x80000000); // the string type leads back to the root
    const auto looped = LoadImage(dir, damaged);
    EXPECT_TRUE(looped == nullptr || looped->LoadString(16).empty());
    for (const std::uint32_t offset : {0x7FFFFFFFU, 0xFFFFFFFFU, 0x80010000U}) {
        damaged = image;
        PeBuilder::Set32(damaged, root + 20, offset);
        const auto outside = LoadImage(dir, damaged);
        EXPECT_TRUE(outside == nullptr || outside->LoadString(16).empty()) << offset;
    }
    damaged = image;
    const std::size_t firstData = root + 24 + 16 + 8 * 4 + 24 * 4;
    PeBuilder::Set32(damaged, firstData, 0xFFFFFFF0); // a block outside the image
    const auto partly = LoadImage(dir, damaged);
    ASSERT_NE(partly, nullptr);
    EXPECT_EQ(partly->LoadString(15), "");
    EXPECT_EQ(partly->LoadString(16), "sixteen") << "the other blocks still serve";
    damaged = image;
    PeBuilder::Set32(damaged, firstData + 4, 6); // the block ends inside its first string
    const auto shortBlock = LoadImage(dir, damaged);
    ASSERT_NE(shortBlock, nullptr);
    EXPECT_EQ(shortBlock->LoadString(0), "");
    EXPECT_EQ(shortBlock->LoadString(15), "");
}

TEST(ResourceLibrary, ReadsWhatTheResourceCompilerMakes) {
    const TestDir dir;
    dir.MakeFile("t.rc",
                 "#pragma code_page(65001)\nSTRINGTABLE { 300 \"Warnung ü\" 528 \"%username \\\"x\\\"\" }\n");
    const std::string at = "cd '" + dir.Host().string() + "' && ";
    const std::string make = at +
                             "{ x86_64-w64-mingw32-windres --codepage=65001 --preprocessor=cat t.rc t.o && "
                             "x86_64-w64-mingw32-ld -shared -e 0 -o lib.dll t.o; } >/dev/null 2>&1";
    if (std::system(make.c_str()) != 0)
        GTEST_SKIP() << "no resource compiler here";
    SystemError error;
    const auto library = ResourceLibrary::Load(kPath, error);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library->LoadString(300), "Warnung ü");
    EXPECT_EQ(library->LoadString(528), "%username \"x\"");
    EXPECT_EQ(library->LoadString(301), "");
}

} // namespace
