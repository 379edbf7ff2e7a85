#include "app/TextIds.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/ZipTest.h"

#include <chrono>

namespace tests {
namespace {

using ZipDirectoryTest = ZipTest;

TEST_F(ZipDirectoryTest, AnEmptyArchiveIsLoadedAndHasNothingToUnpack) {
    Load(ZipBuilder().Bytes());
    EXPECT_EQ(zip::State().ArchiveLoaded, 1);
    EXPECT_EQ(front.FileCount(), 0);
    EXPECT_EQ(UnPackAll(), zip::kStatusNothing);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ZipDirectoryTest, ACommentIsFoundByTheScan) {
    ZipBuilder zip;
    zip.entries = {StoredEntry("a", "text"), DeflatedEntry("b", std::string(5000, 'q'))};
    zip.entries[0].localExtra = "four";
    zip.comment = "made on a Tuesday";
    Load(zip.Bytes());
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(front.CommentsPack(), "made on a Tuesday");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(dir.Read("out/b"), std::string(5000, 'q'));
}

TEST_F(ZipDirectoryTest, TheScanSkipsDataDescriptors) {
    // Without the sizes in the local header the scan runs over the stored bytes in groups of four.
    ZipBuilder zip;
    zip.entries = {StoredEntry("a", "12345678"), StoredEntry("b", "")};
    zip.entries[0].localSizesAreZero = true;
    zip.entries[0].flags = 8;
    zip.entries[0].behind = std::string("PK\x07\x08", 4) + std::string(12, 'd');
    zip.comment = "c";
    Load(zip.Bytes());
    EXPECT_EQ(messages.Ids(), (Ids{IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD}));
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(ZipDirectoryTest, ManyUnrecognisedGroupsCanBeTakenAtOnce) {
    ZipBuilder zip;
    zip.entries = {StoredEntry("a", std::string(400, 'x'))};
    zip.entries[0].localSizesAreZero = true;
    zip.comment = "c";
    messages.restAnswers = {false, true};
    Load(zip.Bytes());
    // Two plain boxes, two that offer the rest, and one for the 96 that were only counted.
    EXPECT_EQ(messages.Ids(), (Ids{IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD,
                                   IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD}));
    EXPECT_TRUE(messages.restAnswers.empty());
    EXPECT_EQ(messages.shown.back().flags, app::kMessageError);
    EXPECT_EQ(Names(), (std::vector<std::string>{"a"}));
}

TEST_F(ZipDirectoryTest, AScanThatFindsNothingIsReportedAndLoadsNothing) {
    ZipBuilder good;
    good.entries = {StoredEntry("a", "text"), StoredEntry("b", "more text")};
    good.comment = "c";
    const std::string bytes = good.Bytes();
    const std::size_t directory = bytes.find("PK\x01\x02");

    ZipBuilder negative = good;
    negative.entries[1].packed = 0x80000000;
    ZipBuilder beyond = good;
    beyond.entries[1].packed = 0x7FFFFFFF;
    for (const std::string& broken :
         {bytes.substr(0, directory), bytes.substr(0, directory - 3), bytes.substr(0, 20), std::string("PK"),
          std::string("PK\x03\x04"), negative.Bytes(), beyond.Bytes()}) {
        messages.shown.clear();
        EXPECT_EQ(Load(broken), 0);
        EXPECT_EQ(zip::State().ArchiveLoaded, 0);
        EXPECT_EQ(front.FileCount(), 0);
        EXPECT_EQ(messages.Ids(), (Ids{IDS_UNKNOWN_RECORD})) << broken.size();
    }
}

TEST_F(ZipDirectoryTest, HundredMegabytesOfRubbishAreLeftQuickly) {
    std::string rubbish = "PK";
    rubbish.resize(100 << 20, '?');
    messages.restAnswers = {true};
    const auto start = std::chrono::steady_clock::now();
    Load(rubbish);
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(messages.Ids(),
              (Ids{IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD, IDS_UNKNOWN_RECORD}));
    EXPECT_EQ(front.FileCount(), 0);
    EXPECT_LT(took, std::chrono::seconds(20));
}

TEST_F(ZipDirectoryTest, CountsAbove32767AreScanned) {
    for (const std::size_t count : {32767u, 32768u, 65535u}) {
        std::vector<ZipEntry> entries;
        for (std::size_t i = 0; i < count; ++i)
            entries.push_back(StoredEntry("n" + std::to_string(i), i + 1 == count ? "last" : ""));
        Load(entries);
        ASSERT_EQ(front.FileCount(), static_cast<std::int32_t>(count));
        EXPECT_EQ(front.FileName(front.FileCount()), "n" + std::to_string(count - 1));
        zip::EntrySelection last(count + 1);
        last[count] = true;
        EXPECT_EQ(front.UnPack(last, dir.MakeFolder("out")), 0);
        EXPECT_EQ(dir.Read("out/n" + std::to_string(count - 1)), "last");
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ZipDirectoryTest, MoreEntriesClaimedThanPresentDoNotExist) {
    ZipBuilder zip;
    zip.entries = {StoredEntry("a", "x"), StoredEntry("b", "y")};
    zip.count = 32767;
    Load(zip.Bytes());
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
    zip.beforeEnd = std::string("PK\x06\x06", 4) + std::string(52, '\0');
    Load(zip.Bytes());
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"})) << "what can only follow the directory ends it";
    EXPECT_EQ(UnPackAll(), 0);

    ZipBuilder none;
    none.count = 5;
    for (const std::uint32_t offset : {0u, 22u, 1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        none.directoryOffset = offset;
        Load("PK" + none.Bytes());
        EXPECT_EQ(front.FileCount(), 0) << offset;
    }
}

TEST_F(ZipDirectoryTest, ADamagedSignatureDoesNotHideAnEntry) {
    std::string bytes = [] {
        ZipBuilder zip;
        zip.entries = {StoredEntry("a", "x"), StoredEntry("b", "y")};
        return zip.Bytes();
    }();
    bytes[bytes.rfind("PK\x01\x02")] = 'Q';
    Load(bytes);
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(ZipDirectoryTest, TheLongestTextsAreReadWhole) {
    ZipBuilder zip;
    zip.entries = {StoredEntry("first", ""), StoredEntry(std::string(65535, 'n'), ""),
                   StoredEntry("last", "")};
    zip.entries[1].extra = std::string(65535, 'e');
    zip.entries[1].comment = std::string(65535, 'c');
    zip.comment = std::string(65535, 'z');
    Load(zip.Bytes());
    ASSERT_EQ(front.FileCount(), 3);
    EXPECT_EQ(front.FileName(2), std::string(65535, 'n'));
    EXPECT_EQ(front.CommentsFile(2), std::string(65535, 'c'));
    EXPECT_EQ(front.FileName(3), "last");
    EXPECT_EQ(front.CommentsPack(), std::string(65535, 'z'));
}

TEST_F(ZipDirectoryTest, TextsAreReadThroughTheAnsiCodePage) {
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    ZipBuilder zip;
    zip.entries = {StoredEntry("caf\xE9.txt", "x")};
    zip.entries[0].comment = "\x80 5";
    zip.comment = "na\xEFve";
    Load(zip.Bytes());
    EXPECT_EQ(front.FileName(1), "caf\u00E9.txt");
    EXPECT_EQ(front.CommentsFile(1), "\u20AC 5");
    EXPECT_EQ(front.CommentsPack(), "na\u00EFve");
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(dir.Read("out/caf\u00E9.txt"), "x");
}

} // namespace
} // namespace tests
