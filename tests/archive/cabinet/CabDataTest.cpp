// Reading the data of cabinets: methods, damage, and extraction in any order.

#include "archive/cabinet/CabTest.h"
#include "support/SmallDisk.h"

#include <algorithm>
#include <filesystem>
#include <random>

namespace tests {
namespace {

class CabDataTest : public CabTest {
  protected:
    /// Every extracted file has the content that its item has.
    void ExpectContents(const CabBuilder& builder) {
        for (const CabItem& item : builder.items)
            EXPECT_TRUE(dir.Read("out/data/" + item.name) == item.content) << item.name;
    }
};

TEST_F(CabDataTest, ReadsStoredAndCompressedFoldersAtOnceAndInAnyOrder) {
    CabBuilder builder;
    builder.stored = {1, 3};
    builder.headerReserve = std::string(300, 'h');
    builder.folderReserve = "ff";
    builder.dataReserve = "ddddd";
    Texts names;
    for (unsigned i = 0; i < 60; ++i) {
        names.push_back("f" + std::to_string(i));
        builder.items.push_back({names.back(), SampleText(9000 * i % 70001, i), static_cast<int>(i / 12)});
    }
    Use(builder);
    EXPECT_TRUE(ExtractAll());
    ExpectContents(builder);
    std::ranges::reverse(names);
    std::mt19937 random(5);
    for (int round = 0; round < 4; ++round) {
        std::filesystem::remove_all(dir.Host("out/data"));
        for (const std::string& name : names)
            ASSERT_TRUE(cab.Extract(name, TestDir::Path("out"), cab.CabName)) << name;
        ExpectContents(builder);
        std::ranges::shuffle(names, random);
    }
}

// Every folder's decoder is given up many times here: there are more than memory is granted for.
TEST_F(CabDataTest, ReadsHundredsOfFoldersInTurn) {
    CabBuilder builder;
    for (int round = 0; round < 3; ++round) {
        for (int folder = 0; folder < 330; ++folder)
            builder.items.push_back({std::to_string(folder) + "." + std::to_string(round),
                                     SampleText(14000, static_cast<unsigned>(folder * 3 + round)), folder});
    }
    Use(builder);
    for (const CabItem& item : builder.items)
        ASSERT_TRUE(ExtractOne(item.name)) << item.name;
    ExpectContents(builder);
}

TEST_F(CabDataTest, DamageIsFoundAndNamed) {
    CabBuilder builder;
    builder.items = {{"a", SampleText(100000)}, {"b", SampleText(100000, 2)}};
    std::string bytes = builder.Bytes();
    bytes[bytes.size() - 20] ^= 0x10;
    UseBytes(bytes);
    EXPECT_TRUE(ExtractOne("a"));
    EXPECT_EQ(ExtractOne("b").number, 23u);
    EXPECT_EQ(ExtractOne("b").description, "Data error (cyclic redundancy check).");
    EXPECT_TRUE(ExtractOne("a")) << "what is sound can still be read";
    EXPECT_FALSE(dir.Read("out/data/b"));

    builder.withChecksums = false;
    bytes = builder.Bytes();
    bytes.resize(bytes.size() - 3000);
    UseBytes(bytes);
    EXPECT_TRUE(ExtractOne("a"));
    EXPECT_EQ(ExtractOne("b").number, 13u);
    EXPECT_EQ(dir.Count("out/data"), 1u);
}

TEST_F(CabDataTest, ClaimsBeyondTheDataAreRefusedAtOnce) {
    CabBuilder builder;
    builder.items = {{"a", "short"}};
    const std::size_t files = 36 + 8;
    for (const auto& [size, offset] : {std::pair(0x7FFFFFFFu, 0u), {5u, 0xFFFFFFFFu}}) {
        UseBytes(builder.Bytes().replace(files, 8, Number(size, 4) + Number(offset, 4)));
        EXPECT_EQ(ExtractAll().number, 13u);
    }
}

// The engine's own decoder is narrower than the format; the library takes what it refuses, wherever it
// begins.
TEST_F(CabDataTest, BlocksThatOnlyTheLibraryDecodes) {
    for (const int block : {0, 11}) {
        CabBuilder builder;
        builder.items = {
            {"a", SampleText(200000)}, {"b", SampleText(400000, 2)}, {"c", SampleText(50000, 3)}};
        std::string bytes = builder.Bytes();
        std::size_t mark = bytes.find("CK");
        const auto storedSize = [&] {
            return static_cast<std::size_t>(static_cast<unsigned char>(bytes[mark - 4]) |
                                            static_cast<unsigned char>(bytes[mark - 3]) << 8);
        };
        for (int i = 0; i < block; ++i)
            mark += storedSize() + 8;
        // An empty stored block in front of the data is legal and is not what an encoder usually makes.
        bytes.replace(mark - 4, 2, Number(storedSize() + 5, 2));
        bytes.replace(mark - 8, 4, Number(0, 4));
        bytes.insert(mark + 2, std::string("\0\0\0\xFF\xFF", 5));
        UseBytes(bytes);
        EXPECT_TRUE(ExtractOne("c"));
        EXPECT_TRUE(ExtractAll());
        ExpectContents(builder);
    }
}

// Found by fuzzing: what such a match copied was whatever the memory had held before.
TEST_F(CabDataTest, MatchesBeforeTheDataReadNothingOfThisProgram) {
    CabBuilder builder;
    const std::string text = SampleText(33000);
    builder.items = {{"a", text}};
    std::string bytes = builder.Bytes();
    // Only the second block stays, without the first one that it reaches back into.
    const std::size_t folder = 36;
    const std::size_t first = bytes.find("CK") - 8;
    const std::size_t second = bytes.find("CK", first + 10) - 8;
    bytes.replace(folder, 6, Number(second, 4) + Number(1, 2));
    bytes.replace(folder + 8, 4, Number(33000 - 32768, 4));
    UseBytes(bytes);
    if (!ExtractAll())
        return;
    const std::string content = *dir.Read("out/data/a");
    const std::string tail = text.substr(32768);
    ASSERT_EQ(content.size(), tail.size());
    for (std::size_t i = 0; i < tail.size(); ++i)
        ASSERT_TRUE(content[i] == tail[i] || content[i] == '\0') << i;
}

TEST_F(CabDataTest, DamagedAnywhereItEndsCleanly) {
    CabBuilder builder;
    builder.items = {{"a", SampleText(300)}, {"sub\\b", SampleText(200, 2)}, {"c", "stored", 1}};
    builder.stored = {1};
    builder.dataReserve = "rr";
    builder.nextCabinet = "n.cab";
    const std::string bytes = builder.Bytes();
    std::size_t listed = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string wrong = bytes;
            wrong[at] = static_cast<char>(wrong[at] ^ flip);
            UseBytes(wrong);
            cab.GetInfo("");
            ExtractAll();
        }
        UseBytes(bytes.substr(0, at));
        listed += cab.GetInfo("") ? 1u : 0u;
        ASSERT_EQ(ExtractAll().number, 13u) << "cut at " << at;
    }
    EXPECT_GT(listed, 100u) << "a directory that is whole is listed";
    UseBytes(bytes);
    EXPECT_TRUE(ExtractAll());
    EXPECT_EQ(dir.Count(), 2u) << "nothing beside the cabinet and the output";
}

TEST_F(CabDataTest, FullDiskLeavesNothingHalfWritten) {
    dir.MakeFolder("out");
    const SmallDisk disk(dir.Host("out"), 256 << 10);
    if (!disk.IsMounted())
        GTEST_SKIP() << "no right to mount a small disk";
    CabBuilder builder;
    builder.items = {{"small", SampleText(50000)}, {"large", SampleText(400000, 2)}};
    Use(builder);
    const cabinet::CabResult result = ExtractAll();
    EXPECT_EQ(result.number, 112u);
    EXPECT_EQ(result.description, "There is not enough space on the disk.");
    EXPECT_EQ(dir.Count("out/data"), 1u);
    EXPECT_EQ(dir.Read("out/data/small"), builder.items[0].content);
}

} // namespace
} // namespace tests
