#include "platform/ResourceLibrary.h"

#include "PeBuilder.h"
#include "PeStringTable.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::PeBuilder;
using tests::TestDir;

PeBuilder Sample(bool is64Bit = false) {
    PeBuilder builder;
    builder.is64Bit = is64Bit;
    builder.language = is64Bit ? 0x0804 : 0x0409;
    builder.strings = {
        {0, u"zero"}, {15, u"fifteen"}, {16, u"sixteen"}, {302, u"Größe \u65E5"}, {65535, u"last"}};
    return builder;
}

TEST(ResourceLibrary, FindsStringsInBothKindsOfImage) {
    for (const bool is64Bit : {false, true}) {
        const TestDir dir;
        SystemError error{99};
        const auto library = ResourceLibrary::Load(dir.MakeFile("lib.dll", Sample(is64Bit).Build()), error);
        ASSERT_NE(library, nullptr);
        EXPECT_FALSE(error);
        std::filesystem::resize_file(dir.Host("lib.dll"), 0); // the file is not held
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

TEST(ResourceLibrary, WhatIsNoLibrary) {
    const TestDir dir;
    SystemError error;
    // No text library is as large as the last.
    for (const std::string& content : {std::string(), std::string("MZ"), std::string((16 << 20) + 1, 'x')}) {
        EXPECT_EQ(ResourceLibrary::Load(dir.MakeFile("lib.dll", content), error), nullptr);
        EXPECT_EQ(error.code, kErrorBadExeFormat);
    }
    EXPECT_EQ(ResourceLibrary::Load("E:\\none.dll", error), nullptr);
    EXPECT_EQ(error.code, kErrorFileNotFound);
}

TEST(PeStringTable, TextsOfAnyKind) {
    PeBuilder builder;
    builder.strings = {{1, {0xD83D, 0xDE00}},
                       {2, {'a', 0xD83D, 'b'}},
                       {3, {0xDE00}},
                       {4, {'a', 0, 'b'}},
                       {5, std::u16string(5000, u'x')}};
    const auto table = PeStringTable::Read(builder.Build());
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Find(1), "\U0001F600");
    EXPECT_EQ(table->Find(2), "a\uFFFDb");
    EXPECT_EQ(table->Find(3), "\uFFFD");
    EXPECT_EQ(table->Find(4), std::string("a\0b", 3));
    EXPECT_EQ(table->Find(5), std::string(5000, 'x'));
}

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

TEST(PeStringTable, LoopsAndOffsetsOutside) {
    const PeBuilder builder = Sample();
    const auto damaged = [&](std::size_t offset, std::uint32_t value) {
        std::string image = builder.Build();
        PeBuilder::Set32(image, builder.ResourcesAt() + offset, value);
        return PeStringTable::Read(std::move(image));
    };
    // The string type leads back to the root, and outside.
    for (const std::uint32_t offset : {0x80000000U, 0x7FFFFFFFU, 0xFFFFFFFFU, 0x80010000U}) {
        const auto table = damaged(20, offset);
        EXPECT_TRUE(!table || table->Find(16).empty()) << offset;
    }
    constexpr std::size_t kFirstData = 24 + 16 + 8 * 4 + 24 * 4;
    const auto outside = damaged(kFirstData, 0xFFFFFFF0);
    ASSERT_TRUE(outside);
    EXPECT_EQ(outside->Find(15), "");
    EXPECT_EQ(outside->Find(16), "sixteen") << "the other blocks still serve";
    const auto shortBlock = damaged(kFirstData + 4, 6); // it ends inside its first string
    ASSERT_TRUE(shortBlock);
    EXPECT_EQ(shortBlock->Find(0), "");
    EXPECT_EQ(shortBlock->Find(15), "");
}

} // namespace
