#include "ZipTest.h"
#include "archive/ArchiveState.h"
#include "platform/Files.h"

#include <ctime>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tests {
namespace {

using DiskIOTest = ZipTest;

/// A file system of one megabyte on a folder, for as long as it lives; not there when mounting is not
/// permitted.
class SmallDisk {
  public:
    explicit SmallDisk(std::filesystem::path folder, const char* options)
        : folder_(std::move(folder)), isMounted_(::mount("none", folder_.c_str(), "tmpfs", 0, options) == 0) {
    }

    ~SmallDisk() {
        if (isMounted_)
            ::umount2(folder_.c_str(), MNT_DETACH);
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsMounted() const { return isMounted_; }

    bool MakeReadOnly() const {
        return ::mount("none", folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

  private:
    std::filesystem::path folder_;
    bool isMounted_;
};

std::time_t LocalTime(int year, int month, int day, int hour, int minute, int second) {
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;
    return std::mktime(&local);
}

TEST_F(DiskIOTest, FilesGetTheEntrysLocalTime) {
    const ScopedVariable zone("TZ", "America/New_York");
    ::tzset();
    const std::time_t before = std::time(nullptr);
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

    struct stat status {};

    ::stat(dir.Host("out/winter").c_str(), &status);
    EXPECT_EQ(status.st_mtime, LocalTime(2005, 3, 4, 10, 20, 30));
    EXPECT_GE(status.st_atime, before - 1) << "the last access is the extraction";
    ::stat(dir.Host("out/summer").c_str(), &status);
    EXPECT_EQ(status.st_mtime, LocalTime(2005, 7, 4, 10, 20, 30));
    for (const char* name : {"out/none", "out/invalid"}) {
        ::stat(dir.Host(name).c_str(), &status);
        EXPECT_GE(status.st_mtime, before - 1) << name;
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(DiskIOTest, NothingIsWrittenOutsideTheTarget) {
    Load({StoredEntry("../up", "x"), StoredEntry("/root", "x"), StoredEntry("C:\\drive", "x"),
          StoredEntry("a/../../b/", ""), StoredEntry("nul.txt", "x"), StoredEntry("", "x"),
          StoredEntry(std::string("a\0b", 3), "x"), StoredEntry("good", "1")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), Ids(7, 560));
    EXPECT_EQ(Written(), (std::vector<std::string>{"good"}));
    EXPECT_EQ(dir.Count(), 2u);
}

TEST_F(DiskIOTest, LinksInTheTargetAreNotFollowed) {
    dir.MakeFolder("elsewhere");
    dir.MakeFile("elsewhere/file", "keep");
    dir.MakeFolder("out");
    std::filesystem::create_directory_symlink(dir.Host("elsewhere"), dir.Host("out/LINK"));
    std::filesystem::create_symlink(dir.Host("elsewhere/file"), dir.Host("out/name"));
    Load({StoredEntry("link/new", "x"), StoredEntry("link/", ""), StoredEntry("name", "1")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{542, 560, 542}));
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
    EXPECT_EQ(messages.Ids(), (Ids{542, 560, 560, 542, 560}));
    EXPECT_EQ(messages.shown[0].flags, app::kMessageError);
    EXPECT_EQ(dir.Read("out/FILE"), "keep");
    EXPECT_EQ(Written(), (std::vector<std::string>{"FILE", "MADE/", "folder/"}));
}

TEST_F(DiskIOTest, TargetsThatCannotBeMadeAreReportedForEachFile) {
    Load({StoredEntry("a", "x"), StoredEntry("b/", "")});
    for (const char* target : {"Q:\\out", "\\\\server\\share", "nowhere"}) {
        messages.shown.clear();
        EXPECT_EQ(front.UnPack(All(), target), 0);
        EXPECT_EQ(messages.Ids(), (Ids{542, 560, 542})) << target;
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
    EXPECT_EQ(dir.Read("out/" + upper + "bottom"), "1");
    EXPECT_EQ(dir.Read("out/" + upper + "again"), "3");
    EXPECT_EQ(dir.Read("out/D/D/D/near"), "2");
    EXPECT_EQ(dir.Read("out/top"), "4");
}

TEST_F(DiskIOTest, AFullDiskLeavesNothingHalfWritten) {
    dir.MakeFolder("out");
    const SmallDisk disk(dir.Host("out"), "size=1m");
    if (!disk.IsMounted())
        GTEST_SKIP() << "mounting is not permitted";
    dir.MakeFile("out/old", "old content");
    Load({StoredEntry("small", "1"), DeflatedEntry("large", std::string(3 << 20, 'x')),
          DeflatedEntry("old", std::string(3 << 20, 'y')), StoredEntry("after", "2")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{560, 560}));
    EXPECT_EQ(Written(), (std::vector<std::string>{"after", "old", "small"}));
    EXPECT_EQ(dir.Read("out/old"), "old content");
}

TEST_F(DiskIOTest, AReadOnlyTargetIsReported) {
    dir.MakeFolder("out");
    const SmallDisk disk(dir.Host("out"), "size=1m");
    if (!disk.IsMounted() || !disk.MakeReadOnly())
        GTEST_SKIP() << "mounting is not permitted";
    Load({StoredEntry("a", "x"), StoredEntry("b/c", "x"), StoredEntry("d/", "")});
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{560, 542, 560, 542}));
    EXPECT_TRUE(Written().empty());
}

/// Takes the target away after the first entry.
class VanishingTarget final : public archive::ExtractionObserver {
  public:
    explicit VanishingTarget(std::filesystem::path target) : target_(std::move(target)) {
        archive::SetObserver(this);
    }

    ~VanishingTarget() override { archive::SetObserver(nullptr); }

    bool EntryDone(std::int32_t, std::int32_t) override {
        std::filesystem::remove_all(target_);
        return true;
    }

  private:
    std::filesystem::path target_;
};

TEST_F(DiskIOTest, ATargetThatVanishesIsReported) {
    Load({StoredEntry("a", "x"), StoredEntry("b", "x")});
    VanishingTarget observer(dir.Host("out"));
    EXPECT_EQ(UnPackAll(), 0);
    EXPECT_EQ(messages.Ids(), (Ids{560}));
    EXPECT_FALSE(std::filesystem::exists(dir.Host("out")));
}

} // namespace
} // namespace tests
