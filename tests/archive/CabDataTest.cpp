// Reading the data of cabinets: methods, damage, and extraction in any order.

#include "CabTest.h"
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

    static CabBuilder ManyFiles(int folders) {
        CabBuilder builder;
        for (int folder = 0; folder < folders; ++folder) {
            for (int i = 0; i < 12; ++i) {
                const auto seed = static_cast<unsigned>(folder * 100 + i);
                builder.items.push_back({"f" + std::to_string(folder) + "-" + std::to_string(i),
                                         SampleText(9000 * seed % 70001, seed), folder});
            }
        }
        return builder;
    }
};

TEST_F(CabDataTest, ReadsStoredAndCompressedFoldersWithReservedAreas) {
    CabBuilder builder = ManyFiles(4);
    builder.stored = {1, 3};
    builder.headerReserve = std::string(300, 'h');
    builder.folderReserve = "ff";
    builder.dataReserve = "ddddd";
    Use(builder);
    EXPECT_TRUE(ExtractAll());
    ExpectContents(builder);
}

TEST_F(CabDataTest, ExtractsOneByOneInAnyOrder) {
    const CabBuilder builder = ManyFiles(5);
    Use(builder);
    Texts names;
    for (const CabItem& item : builder.items)
        names.push_back(item.name);
    std::ranges::reverse(names);
    std::mt19937 random(5);
    for (int round = 0; round < 4; ++round) {
        std::filesystem::remove_all(dir.Host("out"));
        for (const std::string& name : names)
            ASSERT_TRUE(ExtractOne(name)) << name;
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
        UseBytes(
            builder.Bytes().replace(files, 8, CabBuilder::Number(size, 4) + CabBuilder::Number(offset, 4)));
        EXPECT_EQ(ExtractAll().number, 13u);
    }
}

// The engine's own decoder is narrower than the format; the library takes what it refuses.
TEST_F(CabDataTest, BlocksThatOnlyTheLibraryDecodes) {
    CabBuilder builder;
    builder.items = {{"a", SampleText(70000)}};
    std::string bytes = builder.Bytes();
    const std::size_t mark = bytes.find("CK");
    ASSERT_NE(mark, std::string::npos);
    // An empty stored block in front of the data is legal and is not what an encoder usually makes.
    const std::size_t sizes = mark - 4;
    const auto stored = static_cast<std::size_t>(static_cast<unsigned char>(bytes[sizes]) |
                                                 static_cast<unsigned char>(bytes[sizes + 1]) << 8);
    bytes.insert(mark + 2, std::string("\0\0\0\xFF\xFF", 5));
    bytes.replace(sizes, 2, CabBuilder::Number(stored + 5, 2));
    bytes.replace(sizes - 4, 4, CabBuilder::Number(0, 4));
    UseBytes(bytes);
    EXPECT_TRUE(ExtractAll());
    ExpectContents(builder);
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
    bytes.replace(folder, 6, CabBuilder::Number(second, 4) + CabBuilder::Number(1, 2));
    bytes.replace(folder + 8, 4, CabBuilder::Number(33000 - 32768, 4));
    UseBytes(bytes);
    if (!ExtractAll())
        return;
    const std::string content = *dir.Read("out/data/a");
    const std::string tail = text.substr(32768);
    ASSERT_EQ(content.size(), tail.size());
    for (std::size_t i = 0; i < tail.size(); ++i)
        ASSERT_TRUE(content[i] == tail[i] || content[i] == '\0') << i;
}

TEST_F(CabDataTest, CutAnywhereItEndsCleanly) {
    CabBuilder builder;
    builder.items = {{"a", SampleText(300)}, {"sub\\b", SampleText(200, 2)}, {"c", "stored", 1}};
    builder.stored = {1};
    builder.dataReserve = "rr";
    builder.nextCabinet = "n.cab";
    const std::string bytes = builder.Bytes();
    std::size_t listed = 0;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        UseBytes(bytes.substr(0, size));
        listed += cab.GetInfo("") ? 1u : 0u;
        const archive::CabResult result = ExtractAll();
        ASSERT_EQ(result.number, 13u) << size;
    }
    EXPECT_GT(listed, 100u) << "a directory that is whole is listed";
    UseBytes(bytes);
    EXPECT_TRUE(ExtractAll());
}

TEST_F(CabDataTest, EveryByteWrongEndsCleanly) {
    CabBuilder builder;
    builder.items = {{"a", SampleText(300)}, {"b", SampleText(100, 2), 1}};
    const std::string bytes = builder.Bytes();
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string wrong = bytes;
            wrong[at] = static_cast<char>(wrong[at] ^ flip);
            UseBytes(wrong);
            cab.GetInfo("");
            ExtractAll();
        }
    }
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
    const archive::CabResult result = ExtractAll();
    EXPECT_EQ(result.number, 112u);
    EXPECT_EQ(result.description, "There is not enough space on the disk.");
    EXPECT_EQ(dir.Count("out/data"), 1u);
    EXPECT_EQ(dir.Read("out/data/small"), builder.items[0].content);
}

} // namespace
} // namespace tests
