#include "platform/Files.h"

#include "platform/FileReader.h"
#include "platform/OutputFolder.h"
#include "platform/ProfileStrings.h"
#include "support/SmallDisk.h"
#include "support/TestDir.h"

#include <array>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace platform;
using tests::TestDir;
namespace fs = std::filesystem;

constexpr fs::perms kReadOnly = fs::perms::owner_read | fs::perms::group_read;

TEST(Files, Attributes) {
    const TestDir dir;
    dir.MakeFile("plain");
    dir.MakeFile(".dot");
    dir.MakeFile("locked");
    fs::permissions(dir.Host("locked"), kReadOnly);
    fs::create_symlink("plain", dir.Host("link"));
    fs::create_symlink("nowhere", dir.Host("broken"));
    EXPECT_EQ(GetFileAttributes("E:\\PLAIN"), kAttributeArchive);
    EXPECT_EQ(GetFileAttributes("E:\\.dot"), kAttributeArchive | kAttributeHidden);
    EXPECT_EQ(GetFileAttributes("E:\\locked"), kAttributeArchive | kAttributeReadOnly);
    EXPECT_EQ(GetFileAttributes("E:\\"), kAttributeDirectory);
    EXPECT_EQ(GetFileAttributes("E:\\link"), kAttributeArchive);
    EXPECT_EQ(GetFileAttributes("E:\\broken"), std::nullopt);
    EXPECT_EQ(GetFileAttributes("Q:\\plain"), std::nullopt);
    EXPECT_TRUE(FileExists("E:\\.dot"));
    EXPECT_FALSE(FileExists("E:\\")) << "a folder is not a file";
    EXPECT_TRUE(FolderExists("E:"));
    EXPECT_FALSE(FolderExists("E:\\plain"));
}

TEST(Files, ErrorsTellWhatIsMissing) {
    const TestDir dir;
    dir.MakeFile("file");
    SystemError error;
    EXPECT_FALSE(ReadWholeFile("E:\\none", 100, error));
    EXPECT_EQ(error.code, kErrorFileNotFound);
    EXPECT_FALSE(ReadWholeFile("E:\\none\\file", 100, error));
    EXPECT_EQ(error.code, kErrorPathNotFound);
    EXPECT_FALSE(ReadWholeFile("E:\\file\\below", 100, error));
    EXPECT_EQ(error.code, kErrorPathNotFound);
    EXPECT_FALSE(ReadWholeFile("Q:\\file", 100, error));
    EXPECT_EQ(error.code, kErrorPathNotFound);
    EXPECT_FALSE(ReadWholeFile("E:\\", 100, error));
    EXPECT_EQ(error.code, kErrorAccessDenied);
    EXPECT_EQ(CreateFolder("E:\\file").code, kErrorAlreadyExists);
    EXPECT_EQ(CreateFolder("E:\\no\\parent").code, kErrorPathNotFound);
    EXPECT_EQ(CreateFolder("E:\\" + std::string(300, 'x')).code, kErrorNameTooLong);
    EXPECT_EQ(DeleteFile("E:\\none").code, kErrorFileNotFound);
    EXPECT_EQ(DeleteFile("E:\\").code, kErrorAccessDenied);
    EXPECT_EQ(CopyFile("E:\\none", "E:\\x").code, kErrorFileNotFound);
    EXPECT_EQ(CopyFile("E:\\file", "E:\\no\\x").code, kErrorPathNotFound);
    EXPECT_EQ(WriteWholeFile("Q:\\x", {}).code, kErrorPathNotFound);
    EXPECT_EQ(dir.Count(), 1U) << "no failure left anything behind";
    for (std::uint32_t code = 1; code < 300; ++code)
        EXPECT_FALSE(SystemError{code}.Description().empty());
}

TEST(Files, PipeIsRefusedNotWaitedFor) {
    const TestDir dir;
    ASSERT_EQ(mkfifo(dir.Host("pipe").c_str(), 0600), 0);
    SystemError error;
    EXPECT_FALSE(ReadWholeFile("E:\\pipe", 100, error));
    EXPECT_EQ(error.code, kErrorAccessDenied);
    EXPECT_EQ(FileReader::Open("E:\\pipe", error), nullptr);
}

TEST(Files, WritesReplaceWhole) {
    const TestDir dir;
    dir.MakeFile("Setting.ini", "old and longer");
    fs::permissions(dir.Host("Setting.ini"), fs::perms{0640});
    EXPECT_FALSE(WriteWholeFile("E:\\SETTING.INI", std::string("new")));
    EXPECT_EQ(dir.Read("Setting.ini"), "new");
    EXPECT_EQ(fs::status(dir.Host("Setting.ini")).permissions(), fs::perms{0640});
    EXPECT_FALSE(WriteWholeFile("E:\\fresh", {}));
    EXPECT_EQ(dir.Read("fresh"), "");
    EXPECT_EQ(dir.Count(), 2U) << "the same file was replaced and no temporary one is left";
}

TEST(Files, ReadOnlyFileStays) {
    const TestDir dir;
    dir.MakeFile("locked", "mine");
    dir.MakeFile("other", "x");
    fs::permissions(dir.Host("locked"), kReadOnly);
    EXPECT_EQ(WriteWholeFile("E:\\locked", std::string("new")).code, kErrorAccessDenied);
    EXPECT_EQ(CopyFile("E:\\other", "E:\\locked").code, kErrorAccessDenied);
    EXPECT_EQ(DeleteFile("E:\\locked").code, kErrorAccessDenied);
    EXPECT_EQ(WriteWholeFile("E:\\", std::string("new")).code, kErrorAccessDenied);
    EXPECT_EQ(dir.Read("locked"), "mine");
    EXPECT_EQ(dir.Count(), 2U);
}

TEST(Files, LinksAreWrittenThroughButDeletedThemselves) {
    const TestDir dir;
    dir.MakeFile("elsewhere/real", "old");
    fs::create_symlink("elsewhere/real", dir.Host("link"));
    EXPECT_FALSE(WriteWholeFile("E:\\link", std::string("new")));
    EXPECT_EQ(dir.Read("elsewhere/real"), "new");
    EXPECT_TRUE(fs::is_symlink(dir.Host("link")));
    EXPECT_FALSE(DeleteFile("E:\\link"));
    EXPECT_EQ(dir.Read("elsewhere/real"), "new");
}

TEST(Files, NewFileReplacesNothing) {
    const TestDir dir;
    dir.MakeFile("There", "old");
    EXPECT_EQ(CreateNewFile("E:\\there", std::string("new")).code, kErrorFileExists);
    EXPECT_EQ(dir.Read("There"), "old");
    EXPECT_FALSE(CreateNewFile("E:\\fresh", std::string("new")));
    EXPECT_EQ(dir.Read("fresh"), "new");
    EXPECT_EQ(CreateNewFile("E:\\no\\x", {}).code, kErrorPathNotFound);
}

TEST(Files, CopyKeepsContentAndTime) {
    const TestDir dir;
    const std::string content(3'000'000, 'q');
    dir.MakeFile("a", content);
    fs::permissions(dir.Host("a"), kReadOnly);
    const fs::file_time_type time = fs::last_write_time(dir.Host("a")) - std::chrono::hours(999);
    fs::last_write_time(dir.Host("a"), time);
    EXPECT_FALSE(CopyFile("E:\\a", "E:\\b"));
    EXPECT_EQ(dir.Read("b"), content);
    EXPECT_EQ(fs::last_write_time(dir.Host("b")), time);
    EXPECT_FALSE(DeleteFile("E:\\b")) << "the copy of a protected file is not protected";
}

TEST(Files, CopyOntoItselfLeavesItWhole) {
    const TestDir dir;
    dir.MakeFile("a", "content");
    fs::create_hard_link(dir.Host("a"), dir.Host("same"));
    EXPECT_TRUE(CopyFile("E:\\a", "E:\\A"));
    EXPECT_TRUE(CopyFile("E:\\a", "E:\\same"));
    EXPECT_EQ(dir.Read("a"), "content");
    EXPECT_EQ(dir.Count(), 2U);
}

TEST(Files, FullDiskKeepsTheOldFile) {
    const TestDir dir;
    dir.MakeFolder("disk");
    const tests::SmallDisk disk(dir.Host("disk"));
    if (!disk.IsMounted())
        GTEST_SKIP() << "mounting is not permitted here";
    dir.MakeFile("big", std::string(100'000, 'x'));
    dir.MakeFile("disk/old", "old");
    EXPECT_EQ(CopyFile("E:\\big", "E:\\disk\\old").code, kErrorDiskFull);
    EXPECT_EQ(WriteWholeFile("E:\\disk\\old", std::string(100'000, 'x')).code, kErrorDiskFull);
    EXPECT_EQ(CreateNewFile("E:\\disk\\new", std::string(100'000, 'x')).code, kErrorDiskFull);
    EXPECT_EQ(dir.Read("disk/old"), "old");
    EXPECT_EQ(dir.Count("disk"), 1U);
}

TEST(Files, WriteProtectedMediumSaysSo) {
    const TestDir dir;
    dir.MakeFolder("disk");
    const tests::SmallDisk disk(dir.Host("disk"));
    if (!disk.IsMounted())
        GTEST_SKIP() << "mounting is not permitted here";
    dir.MakeFile("disk/old", "[A]\nK=1\n");
    ASSERT_TRUE(disk.Protect());
    EXPECT_EQ(WriteWholeFile("E:\\disk\\old", std::string("new")).code, kErrorWriteProtect);
    EXPECT_EQ(CreateNewFile("E:\\disk\\new", std::string("new")).code, kErrorWriteProtect);
    EXPECT_EQ(CreateFolder("E:\\disk\\folder").code, kErrorWriteProtect);
    EXPECT_EQ(DeleteFile("E:\\disk\\old").code, kErrorWriteProtect);
    EXPECT_EQ(CopyFile("E:\\disk\\old", "E:\\disk\\new").code, kErrorWriteProtect);
    EXPECT_EQ(WriteProfileString("A", "K", "2", "E:\\disk\\old").code, kErrorWriteProtect);
    SystemError error;
    const auto folder = OutputFolder::Open("E:\\disk", error);
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(folder->WriteFile("old", {}, std::nullopt).code, kErrorWriteProtect);
    EXPECT_EQ(folder->WriteFile("new", {}, std::nullopt).code, kErrorWriteProtect);
    EXPECT_EQ(folder->OpenOrCreate("folder", "folder", error), nullptr);
    EXPECT_EQ(error.code, kErrorWriteProtect);
    EXPECT_EQ(dir.Read("disk/old"), "[A]\nK=1\n");
    EXPECT_FALSE(CopyFile("E:\\disk\\old", "E:\\copy")) << "and can still be read";
}

TEST(Files, WholeFileHasALimit) {
    const TestDir dir;
    dir.MakeFile("five", "12345");
    SystemError error;
    EXPECT_EQ(ReadWholeFile("E:\\five", 5, error), "12345");
    EXPECT_FALSE(error);
    EXPECT_EQ(ReadWholeFile("E:\\five", 4, error), std::nullopt);
    EXPECT_EQ(error.code, kErrorInvalidData);
}

TEST(FileReader, ReadsAtAnyPosition) {
    const TestDir dir;
    dir.MakeFile("f", "0123456789");
    SystemError error{99};
    const auto reader = FileReader::Open("E:\\F", error);
    ASSERT_NE(reader, nullptr);
    EXPECT_FALSE(error);
    EXPECT_EQ(reader->Size(), 10U);
    std::array<std::uint8_t, 4> buffer{};
    EXPECT_EQ(reader->ReadAt(3, buffer), 4U);
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 4>{'3', '4', '5', '6'}));
    EXPECT_EQ(reader->ReadAt(8, buffer), 2U);
    EXPECT_EQ(reader->ReadAt(10, buffer), 0U);
    EXPECT_EQ(reader->ReadAt(~std::uint64_t{0}, buffer), 0U);
    EXPECT_EQ(reader->ReadAt(0, {}), 0U);
    EXPECT_EQ(FileReader::Open("E:\\", error), nullptr);
    EXPECT_EQ(error.code, kErrorAccessDenied);
    EXPECT_EQ(FileReader::Open("E:\\none", error), nullptr);
    EXPECT_EQ(error.code, kErrorFileNotFound);
}

} // namespace
