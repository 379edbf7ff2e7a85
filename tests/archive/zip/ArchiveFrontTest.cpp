#include "archive/zip/ArchiveReader.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/ZipTest.h"

namespace tests {
namespace {

using FrontTest = ZipTest;

TEST_F(FrontTest, OnlyTheFirstTwoBytesMakeAZipFile) {
    EXPECT_EQ(front.Get_Contents(""), zip::kStatusRefused);
    for (const char* content : {"", "P", "KP", "MZ\x90PK\x03\x04", "PX\x03\x04"})
        EXPECT_EQ(Load(std::string(content)), zip::kStatusNotZip) << content;
    EXPECT_EQ(front.Get_Contents(dir.Path("none.zip")), zip::kStatusNotZip);
    EXPECT_EQ(front.Get_Contents(dir.MakeFolder("folder.zip")), zip::kStatusNotZip);
    EXPECT_EQ(messages.shown.size(), 0u);

    EXPECT_EQ(front.Get_Contents(dir.MakeFile("notes.txt", "PK is how it starts")), zip::kStatusDone);
    EXPECT_EQ(zip::State().ArchiveLoaded, 0) << "no directory in it";
}

TEST_F(FrontTest, NothingLoadedAnswersEmptyValues) {
    Load({StoredEntry("a", "x")});
    ASSERT_EQ(front.FileCount(), 1);
    EXPECT_TRUE(front.CanUnpack());
    ASSERT_EQ(Load("no archive"), zip::kStatusNotZip);
    EXPECT_FALSE(front.CanUnpack());
    EXPECT_EQ(front.FileCount(), 0);
    EXPECT_EQ(front.FileName(1), "");
    EXPECT_EQ(front.Method(1), "");
    EXPECT_EQ(front.SystemMadeBy(1), "");
    EXPECT_EQ(front.VersionMadeBy(1), "");
    EXPECT_EQ(front.CRC32(1), 0);
    EXPECT_FALSE(front.Encrypted(1));
    EXPECT_EQ(front.FileDateTime(1), zip::kZeroDate);
    EXPECT_EQ(front.UnPack({false, true}, dir.Path()), zip::kStatusDone);
    EXPECT_EQ(dir.Count(), 1u);
}

TEST_F(FrontTest, EntriesAnswerWhatTheDirectoryHolds) {
    ZipEntry entry = DeflatedEntry("docs/letter.txt", std::string(1000, 'a'));
    entry.madeBy = 0x0B3F;
    entry.needed = 0x0014;
    entry.comment = "a word";
    entry.time = 0x528F; // 10:20:30
    entry.extra = std::string("\x55\x54\x01\x00\x00", 5);
    ZipEntry other = Encrypted(StoredEntry("b", "x"), "p");
    other.method = 12;
    other.madeBy = 0xFF00;
    other.needed = 0x1300;
    other.date = 0;
    other.time = 0;
    Load({entry, other});

    EXPECT_EQ(front.FileName(1), "docs/letter.txt");
    EXPECT_EQ(front.CommentsFile(1), "a word");
    EXPECT_EQ(front.Method(1), "Deflated");
    EXPECT_EQ(static_cast<std::uint32_t>(front.CRC32(1)), entry.crc);
    EXPECT_EQ(front.Compressed_Size(1), static_cast<std::int32_t>(entry.stored.size()));
    EXPECT_EQ(front.UnCompressed_Size(1), 1000);
    EXPECT_FALSE(front.Encrypted(1));
    EXPECT_EQ(front.FileDateTime(1), (platform::SystemTime{2005, 3, 4, 10, 20, 30}));
    EXPECT_EQ(front.SystemMadeBy(1), "MVS (OS/390 - Z/OS)");
    EXPECT_EQ(front.VersionMadeBy(1), "6.3");
    EXPECT_EQ(front.SystemNeeded(1), "MS-DOS and OS/2 (FAT / VFAT / FAT32 file systems)");
    EXPECT_EQ(front.VersionNeeded(1), "2.0");

    EXPECT_TRUE(front.Encrypted(2));
    EXPECT_EQ(front.Method(2), "BZip2");
    EXPECT_EQ(front.SystemMadeBy(2), "UnKnown");
    EXPECT_EQ(front.SystemNeeded(2), "UnKnown");
    EXPECT_EQ(front.VersionMadeBy(2), "0.0");
    EXPECT_EQ(front.FileDateTime(2), (platform::SystemTime{1601, 1, 1, 0, 0, 0}));

    for (const std::int32_t outside : {-1, 0, 3, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(front.FileName(outside), "") << outside;
        EXPECT_EQ(front.Compressed_Size(outside), 0) << outside;
        EXPECT_EQ(front.FileDateTime(outside), zip::kZeroDate) << outside;
    }
}

TEST_F(FrontTest, MethodNamesEndAtBZip2) {
    std::vector<ZipEntry> entries;
    for (const int method : {0, 1, 5, 7, 9, 10, 11, 13, 99, 0xFFFF}) {
        entries.push_back(StoredEntry("x", ""));
        entries.back().method = static_cast<std::uint16_t>(method);
    }
    Load(entries);
    std::vector<std::string> names;
    for (std::int32_t entry = 1; entry <= front.FileCount(); ++entry)
        names.push_back(front.Method(entry));
    EXPECT_EQ(names, (std::vector<std::string>{"No Compression", "Shrunk", "Reduce Factor 4", "Tokenized",
                                               "Enhanced Deflating", "PKWARE Imploding", "Reserved",
                                               "Unknown", "Unknown", "Unknown"}));
}

TEST_F(FrontTest, AFolderEntryHasNoBytesAndEndsInASlash) {
    ZipEntry withBytes = StoredEntry("c/", "x");
    Load({StoredEntry("a/", ""), StoredEntry("b", ""), withBytes, StoredEntry("d\\", "")});
    EXPECT_TRUE(front.IsDir(1));
    EXPECT_FALSE(front.IsDir(2));
    EXPECT_FALSE(front.IsDir(3));
    EXPECT_FALSE(front.IsDir(4));
}

TEST_F(FrontTest, ALaterArchiveReplacesTheLoadedOne) {
    Load({StoredEntry("a", "x"), StoredEntry("b", "y")});
    zip::Cls_GetFileType second;
    ZipBuilder zip;
    zip.entries = {StoredEntry("only", "z")};
    second.Get_Contents(dir.MakeFile("b.zip", zip.Bytes()));
    EXPECT_EQ(second.FileCount(), 1);
    EXPECT_EQ(zip::State().ArchivePath, dir.Path("b.zip"));
    EXPECT_EQ(front.FileCount(), 1);
    EXPECT_EQ(front.FileName(2), "");
    EXPECT_EQ(front.UnPack({false, true}, dir.MakeFolder("out")), zip::kStatusNothing)
        << "the entries of one archive are not taken from another";
}

} // namespace
} // namespace tests
