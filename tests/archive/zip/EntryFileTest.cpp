#include "app/TextIds.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/ZipTest.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "support/HostFiles.h"
#include "support/SmallDisk.h"

namespace tests {
namespace {

using DiskIOTest = ZipTest;

/// When a file below E:\\out was written, in the zone of the process; nothing when it is missing.
platform::SystemTime LocalTimeOf(const char* name) {
    const auto entry = platform::FindEntry(TestDir::Path(std::string("out/") + name));
    return entry ? FileTimeToSystemTime(FileTimeToLocalFileTime(entry->lastWrite)) : platform::SystemTime{};
}

TEST_F(DiskIOTest, FilesGetTheEntrysLocalTime) {
    const TimeZone zone;
    const platform::FileTime before = platform::CurrentFileTime();
    ZipEntry winter = StoredEntry("winter", "1");
    winter.time = 0x528F; // 10:20:30
    ZipEntry summer = winter;
    summer.name = "summer";
    summer.date = 0x32E4; // 2005-07-04
    ZipEntry none = StoredEntry("none", "3");
    none.date = none.time = 0;
    ZipEntry invalid = StoredEntry("invalid", "4");
    invalid.date = 0x0001; // month 0
    Load({winter, summer, none, invalid});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(LocalTimeOf("winter"), (platform::SystemTime{2005, 3, 4, 10, 20, 30}));
    EXPECT_EQ(LocalTimeOf("summer"), (platform::SystemTime{2005, 7, 4, 10, 20, 30}));
    for (const char* name : {"E:\\out\\none", "E:\\out\\invalid"})
        EXPECT_GE(platform::FindEntry(name)->lastWrite.ticks + 10'000'000, before.ticks) << name;
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(DiskIOTest, NothingIsWrittenOutsideTheTarget) {
    Load({StoredEntry("../up", "x"), StoredEntry("/root", "x"), StoredEntry("C:\\drive", "x"),
          StoredEntry("a/../../b/", ""), StoredEntry("nul.txt", "x"), StoredEntry("", "x"),
          StoredEntry(std::string("a\0b", 3), "x"), StoredEntry("good", "1")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), Ids(7, IDS_NOT_WRITTEN));
    EXPECT_EQ(Written(), (std::vector<std::string>{"good"}));
    EXPECT_EQ(dir.Count(), 2u);
}

TEST_F(DiskIOTest, LinksInTheTargetAreNotFollowed) {
    dir.MakeFolder("elsewhere");
    dir.MakeFile("elsewhere/file", "keep");
    dir.MakeFolder("out");
    if (!MakeLink(dir.Host("elsewhere"), dir.Host("out/LINK")) ||
        !MakeLink(dir.Host("elsewhere/file"), dir.Host("out/name")))
        GTEST_SKIP() << "no links here";
    Load({StoredEntry("link/new", "x"), StoredEntry("link/", ""), StoredEntry("name", "1")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_FOLDER_NOT_MADE, IDS_NOT_WRITTEN, IDS_FOLDER_NOT_MADE}));
    EXPECT_EQ(dir.Count("elsewhere"), 1u);
    EXPECT_EQ(dir.Read("elsewhere/file"), "keep");
    EXPECT_FALSE(std::filesystem::is_symlink(dir.Host("out/name")));
    EXPECT_EQ(dir.Read("out/name"), "1");
}

TEST_F(DiskIOTest, FilesAndFoldersInEachOthersWayAreReported) {
    dir.MakeFile("out/FILE", "keep");
    dir.MakeFolder("out/folder");
    ZipEntry slash = DeflatedEntry("made/", "");
    Load({StoredEntry("file/a", "x"), StoredEntry("folder", "x"), StoredEntry("file/", ""), slash});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_FOLDER_NOT_MADE, IDS_NOT_WRITTEN, IDS_NOT_WRITTEN, IDS_FOLDER_NOT_MADE,
                                   IDS_NOT_WRITTEN}));
    EXPECT_EQ(messages.shown[0].flags, app::kMessageError);
    EXPECT_EQ(dir.Read("out/FILE"), "keep");
    EXPECT_EQ(Written(), (std::vector<std::string>{"FILE", "MADE/", "folder/"}));
}

TEST_F(DiskIOTest, TargetsThatCannotBeMadeAreReportedForEachFile) {
    Load({StoredEntry("a", "x"), StoredEntry("b/", "")});
    for (const char* target : {"Q:\\out", "\\\\server\\share", "nowhere"}) {
        messages.shown.clear();
        EXPECT_EQ(front.UnPack(All(), target), 0);
        EXPECT_EQ(messages.Ids(), (Ids{IDS_FOLDER_NOT_MADE, IDS_NOT_WRITTEN, IDS_FOLDER_NOT_MADE})) << target;
    }
    EXPECT_EQ(dir.Count(), 1u);
}

TEST_F(DiskIOTest, DeepPathsDoNotExhaustOpenFolders) {
    std::string deep;
    for (int i = 0; i < 200; ++i)
        deep += "d/";
    Load({StoredEntry(deep + "bottom", "1"), StoredEntry("d/d/d/near", "2"), StoredEntry(deep + "again", "3"),
          StoredEntry("top", "4")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_TRUE(messages.shown.empty());
    std::string upper = deep;
    std::replace(upper.begin(), upper.end(), 'd', 'D');
    for (const auto& [file, content] : {std::pair(upper + "bottom", "1"),
                                        {upper + "again", "3"},
                                        {std::string("D/D/D/near"), "2"},
                                        {std::string("top"), "4"}}) {
        base::SystemError error;
        EXPECT_EQ(platform::ReadWholeFile(TestDir::Path("out/" + file), 1, error), content) << file;
    }
}

TEST_F(DiskIOTest, AFullDiskLeavesNothingHalfWritten) {
    dir.MakeFolder("out");
    const SmallDisk disk(dir.Host("out"), 1 << 20);
    if (!disk.IsMounted())
        GTEST_SKIP() << "mounting is not permitted";
    dir.MakeFile("out/old", "old content");
    Load({StoredEntry("small", "1"), DeflatedEntry("large", std::string(3 << 20, 'x')),
          DeflatedEntry("old", std::string(3 << 20, 'y')), StoredEntry("after", "2")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_NOT_WRITTEN, IDS_NOT_WRITTEN}));
    EXPECT_EQ(Written(), (std::vector<std::string>{"after", "old", "small"}));
    EXPECT_EQ(dir.Read("out/old"), "old content");
}

TEST_F(DiskIOTest, ATargetThatVanishesIsReported) {
    Load({StoredEntry("a", "x"), StoredEntry("b", "x")});
    CountingObserver observer([&](std::int32_t) {
        std::filesystem::remove_all(dir.Host("out"));
        return true;
    });
    EXPECT_EQ(UnPackAll(&observer), 0);
    EXPECT_EQ(messages.Ids(), (Ids{IDS_NOT_WRITTEN}));
    EXPECT_FALSE(dir.Exists("out"));
}

} // namespace
} // namespace tests
