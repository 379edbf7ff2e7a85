#include "archive/rar/RarAdaptor.h"

#include "archive/rar/RarLibrary.h"
#include "archive/rar/RarName4.h"
#include "archive/rar/RarVolumes.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "platform/OutputFolder.h"
#include "support/RarBuilder.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>
#include <map>

namespace tests {
namespace {

using namespace platform;

/// The program's own reader on archives of one format.
class RarAdaptorTest : public testing::TestWithParam<int> {
  protected:
    RarAdaptorTest() {
        builder.format = GetParam();
        dir.MakeFolder("out");
    }

    /// Extracts all entries to E:\out as far as it goes; returns the results, that of the last header last.
    std::vector<int> Extract(const std::string& path, int operation = rar::kRarExtract) {
        rar::RAROpenArchiveData data;
        data.ArcName = path;
        data.OpenMode = rar::kRarOpenExtract;
        rar::RarAdaptor adaptor;
        const auto archive = adaptor.RAROpenArchive(data);
        if (!archive)
            return {data.OpenResult};
        base::SystemError error;
        const auto folder = OutputFolder::Open(TestDir::Path("out"), error);
        archive->RARSetCallback([&](std::span<const std::uint8_t> piece) {
            unpacked += piece.size();
            return unpacked <= kMostBytes;
        });
        std::vector<int> results;
        int result = 0;
        while ((result = archive->RARReadHeader(header)) == rar::kRarSuccess) {
            names.push_back(header.FileName);
            results.push_back(
                archive->RARProcessFile(operation, "E:\\out\\", "E:\\out\\" + header.FileName, folder.get()));
        }
        results.push_back(result);
        EXPECT_EQ(archive->RARReadHeader(header), result) << "the end stays the end";
        return results;
    }

    std::vector<int> ExtractBytes(const std::string& bytes) { return Extract(dir.MakeFile("a.rar", bytes)); }

    using Results = std::vector<int>;
    static constexpr std::size_t kMostBytes = 1 << 20;

    TestDir dir;
    RarBuilder builder;
    rar::RARHeaderData header;
    std::vector<std::string> names;
    std::size_t unpacked = 0;
};

TEST_P(RarAdaptorTest, TellsAndExtractsEntriesInOrder) {
    builder.items = {{"sub/b.txt", "content"}, {"sub", "", true}, {"empty", ""}};
    EXPECT_EQ(ExtractBytes(builder.Bytes()), (Results{0, rar::kRarCannotCreate, 0, rar::kRarEndOfArchive}));
    EXPECT_EQ(names, (std::vector<std::string>{"sub\\b.txt", "sub", "empty"}));
    EXPECT_EQ(header.UnpSize, 0u);
    EXPECT_EQ(header.ArcName, "E:\\a.rar");
    EXPECT_EQ(dir.Read("out/b.txt"), "content") << "in the open folder that was given";
    EXPECT_EQ(dir.Read("out/empty"), "");
    const FileTime time = FindEntry("E:\\out\\b.txt")->lastWrite; // format 4 has local times
    EXPECT_EQ(FileTimeToSystemTime(GetParam() == 5 ? time : FileTimeToLocalFileTime(time)),
              (GetParam() == 5 ? SystemTime{2001, 9, 9, 1, 46, 40} : SystemTime{2001, 9, 9, 7, 35, 0}));
}

TEST_P(RarAdaptorTest, NeverLooksCompleteWhenCut) {
    builder.items = {{"one", "the first"}, {"two", "the second"}};
    const std::string whole = builder.Bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Results results = ExtractBytes(whole.substr(0, length));
        EXPECT_NE(results.back(), rar::kRarEndOfArchive) << length;
        for (const auto& [name, content] :
             std::map<std::string, std::string>{{"one", "the first"}, {"two", "the second"}})
            EXPECT_EQ(dir.Read("out/" + name).value_or(content), content) << length;
    }
    EXPECT_EQ(ExtractBytes(whole), (Results{0, 0, rar::kRarEndOfArchive}));
}

TEST_P(RarAdaptorTest, NeverTakesDamageForContent) {
    builder.items = {{"one", "the first"}, {"two", "the second"}};
    const std::string whole = builder.Bytes();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ (1 << at % 8));
        EXPECT_NE(ExtractBytes(damaged), (Results{0, 0, rar::kRarEndOfArchive})) << at;
    }
    EXPECT_EQ(dir.Count("out"), 2u) << "only whole files under their own names";
}

TEST_P(RarAdaptorTest, RefusesWhatItCannotUnpack) {
    const auto only = [&](RarItem item) {
        builder.items = {std::move(item)};
        return ExtractBytes(builder.Bytes())[0];
    };
    EXPECT_EQ(only({.name = "secret", .content = "0123", .encrypted = true}), rar::kRarBadData);
    EXPECT_EQ(only({.name = "solid", .content = "0123", .solid = true, .packed = true}), rar::kRarBadData);
    EXPECT_EQ(only({.name = "noise", .content = "0123456789abcdefghij", .packed = true, .size = 99}),
              rar::kRarBadData);
    EXPECT_EQ(only({.name = "link", .content = "/etc/passwd", .link = true}), rar::kRarCannotCreate);
    EXPECT_EQ(only({.name = "crc", .content = "0123", .crc = 1}), rar::kRarBadData);
    EXPECT_EQ(only({.name = "short", .content = "0123", .size = 3}), rar::kRarBadData);
    EXPECT_EQ(only({.name = "huge", .content = "0123", .size = ~0ull >> 2}), rar::kRarBadData);
    EXPECT_EQ(dir.Count("out"), 0u);
    builder.encryptedHeaders = true;
    EXPECT_EQ(only({.name = "hidden", .content = "0123"}), rar::kRarBadData);
    EXPECT_EQ(ExtractBytes("RE~^ and more"), Results{rar::kRarUnknownFormat});
    EXPECT_EQ(ExtractBytes("Rar!\x1A\x07\x02 and more"), Results{rar::kRarUnknownFormat});
    EXPECT_EQ(ExtractBytes("This is no archive."), Results{rar::kRarNotRar});
    EXPECT_EQ(Extract(TestDir::Path("missing.rar")), Results{rar::kRarCannotOpen});
}

TEST_P(RarAdaptorTest, FollowsAnEntryOverVolumes) {
    const std::string whole = "a piece, another piece, and the last one";
    builder.isVolume = true;
    const auto volume = [&](int number, std::size_t from, std::size_t to) {
        const bool last = to == whole.size();
        builder.items = {{.name = "long",
                          .content = whole.substr(from, to - from),
                          .size = whole.size(),
                          .crc = Crc(last ? whole : "x"),
                          .splitBefore = from > 0,
                          .splitAfter = !last}};
        if (last)
            builder.items.push_back({"after", "it"});
        builder.moreVolumes = !last;
        return dir.MakeFile("set.part" + std::to_string(number) + ".rar", builder.Bytes());
    };
    const std::string first = volume(9, 0, 9);
    volume(10, 9, 24);
    const std::string third = volume(11, 24, whole.size());
    EXPECT_EQ(Extract(first), (Results{0, 0, rar::kRarEndOfArchive}));
    EXPECT_EQ(dir.Read("out/long"), whole);
    EXPECT_EQ(header.ArcName, third);
    EXPECT_EQ(Extract(third), (Results{rar::kRarCannotOpen, 0, rar::kRarEndOfArchive})) << "it began before";
    std::filesystem::remove(dir.Host("set.part11.rar"));
    EXPECT_EQ(Extract(first), (Results{rar::kRarCannotOpen, rar::kRarCannotOpen}));
    EXPECT_EQ(Extract(first, rar::kRarSkip), (Results{rar::kRarCannotOpen, rar::kRarCannotOpen}));
    EXPECT_EQ(dir.Read("out/long"), whole) << "what was there stays";
}

TEST_P(RarAdaptorTest, EndsWithoutAFileWhenToldTo) {
    builder.items = {{"big", std::string(kMostBytes + 1, 'b')}, {"next", "n"}};
    const Results results = ExtractBytes(builder.Bytes());
    EXPECT_NE(results[0], 0);
    EXPECT_EQ(dir.Count("out"), 0u) << "neither it nor a part under another name";
}

INSTANTIATE_TEST_SUITE_P(Formats, RarAdaptorTest, testing::Values(4, 5));

TEST(RarNames, NextVolumes) {
    EXPECT_EQ(rar::NextVolumePath("E:\\v1\\a.part09.rar", false), "E:\\v1\\a.part10.rar");
    EXPECT_EQ(rar::NextVolumePath("E:\\v1\\a.part9.rar", false), "E:\\v1\\a.part10.rar");
    EXPECT_EQ(rar::NextVolumePath("E:\\v1\\a.rar", false), "") << "a folder's number is not the volume's";
    EXPECT_EQ(rar::NextVolumePath("E:\\a.rar", true), "E:\\a.r00");
    EXPECT_EQ(rar::NextVolumePath("E:\\a.r09", true), "E:\\a.r10");
    EXPECT_EQ(rar::NextVolumePath("E:\\a.r99", true), "E:\\a.s00");
    EXPECT_EQ(rar::NextVolumePath("E:\\b.c\\a", true), "");
}

TEST(RarNames, Unpacked) {
    using namespace std::string_literals;
    const auto name = [](const std::string& bytes) {
        return rar::UnicodeName({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    };
    // High byte 4; steps: two of that page, one byte, one of two bytes; then a run of the plain name.
    EXPECT_EQ(name("??a?.txt\0\x04\x52\x42\x43"
                   "a\xAC\x20\xC0\x02"s),
              "\u0442\u0443a\u20AC.txt");
    EXPECT_EQ(name("dir/\xC3\xA9"s), "dir\\\u00E9") << "UTF-8 without a packed form";
    EXPECT_EQ(name("plain\0"s), "plain");
    EXPECT_EQ(name("x\0\x04\xFF\xFF\xFF"s), "\u0477") << "no run goes beyond the plain name";
}

} // namespace
} // namespace tests
