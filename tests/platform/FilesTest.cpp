#include "platform/Files.h"

#include "platform/FileReader.h"
#include "platform/FindFiles.h"
#include "platform/OutputFolder.h"
#include "support/HostFiles.h"
#include "support/SmallDisk.h"
#include "support/TestDir.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::TestDir;
namespace fs = std::filesystem;

TEST(Files, Attributes) {
    const TestDir dir;
    for (const char* name : {"plain", ".dot", "locked"})
        dir.MakeFile(name);
    tests::Protect(dir.Host("locked"));
    tests::Hide(dir.Host(".dot"));
    EXPECT_EQ(GetFileAttributes("E:\\PLAIN"), kAttributeArchive);
    EXPECT_EQ(GetFileAttributes("E:\\.dot"), kAttributeArchive | kAttributeHidden);
    EXPECT_EQ(GetFileAttributes("E:\\locked"), kAttributeArchive | kAttributeReadOnly);
    EXPECT_EQ(GetFileAttributes("E:\\"), kAttributeDirectory);
    EXPECT_EQ(GetFileAttributes("Q:\\plain"), std::nullopt);
    EXPECT_TRUE(FileExists("E:\\.dot"));
    EXPECT_FALSE(FileExists("E:\\")) << "a folder is not a file";
    EXPECT_TRUE(FolderExists("E:"));
    EXPECT_FALSE(FolderExists("E:\\plain"));
    if (!tests::MakeLink("plain", dir.Host("link")) || !tests::MakeLink("nowhere", dir.Host("broken")))
        GTEST_SKIP() << "no links here";
    EXPECT_EQ(GetFileAttributes("E:\\link"), kAttributeArchive);
    EXPECT_EQ(GetFileAttributes("E:\\broken"), std::nullopt);
}

TEST(Files, ReadingTellsWhyItCannot) {
    const TestDir dir;
    dir.MakeFile("file", "12345");
    std::vector<std::pair<const char*, std::uint32_t>> cases = {{"E:\\none", base::kErrorFileNotFound},
                                                                {"E:\\none\\file", base::kErrorPathNotFound},
                                                                {"E:\\file\\below", base::kErrorPathNotFound},
                                                                {"Q:\\file", base::kErrorPathNotFound},
                                                                {"E:\\", base::kErrorAccessDenied}};
    if (tests::MakePipe(dir.Host("pipe")))
        cases.emplace_back("E:\\pipe", base::kErrorAccessDenied); // not waited for
    base::SystemError error;
    for (const auto& [path, code] : cases) {
        EXPECT_FALSE(ReadWholeFile(path, 100, error)) << path;
        EXPECT_EQ(error.code, code) << path;
        EXPECT_EQ(FileReader::Open(path, error), nullptr) << path;
        EXPECT_EQ(error.code, code) << path;
    }
    EXPECT_EQ(ReadWholeFile("E:\\file", 4, error), std::nullopt) << "more than was asked for";
    EXPECT_EQ(error.code, base::kErrorInvalidData);
    EXPECT_EQ(ReadWholeFile("E:\\file", 5, error), "12345");
    EXPECT_FALSE(error);
}

TEST(Files, FoldersThatCannotBeOpened) {
    const TestDir dir;
    dir.MakeFile("file");
    const std::tuple<const char*, std::uint32_t, std::uint32_t> cases[] = {
        // to be searched, to be written into
        {"E:\\none\\", base::kErrorPathNotFound, base::kErrorFileNotFound},
        {"E:\\file", base::kErrorFolderInvalid, base::kErrorPathNotFound},
        {"Q:\\", base::kErrorPathNotFound, base::kErrorPathNotFound}};
    for (const auto& [folder, searched, written] : cases) {
        base::SystemError error;
        EXPECT_EQ(FindFiles::Start(folder, error), nullptr);
        EXPECT_EQ(error.code, searched) << folder;
        EXPECT_EQ(OutputFolder::Open(folder, error), nullptr);
        EXPECT_EQ(error.code, written) << folder;
    }
}

TEST(Files, WritingTellsWhyItCannotAndChangesNothing) {
    const TestDir dir;
    dir.MakeFile("File", "mine");
    dir.MakeFile("locked", "mine");
    tests::Protect(dir.Host("locked"));
    const std::string text = "new";
    const std::pair<base::SystemError, std::uint32_t> cases[] = {
        {CreateFolder("E:\\file"), base::kErrorAlreadyExists},
        {CreateFolder("E:\\no\\parent"), base::kErrorPathNotFound},
        {DeleteFile("E:\\none"), base::kErrorFileNotFound},
        {DeleteFile("E:\\"), base::kErrorAccessDenied},
        {DeleteFile("E:\\locked"), base::kErrorAccessDenied},
        {CopyFile("E:\\none", "E:\\x"), base::kErrorFileNotFound},
        {CopyFile("E:\\file", "E:\\no\\x"), base::kErrorPathNotFound},
        {CopyFile("E:\\file", "E:\\locked"), base::kErrorAccessDenied},
        {WriteWholeFile("Q:\\x", text), base::kErrorPathNotFound},
        {WriteWholeFile("E:\\", text), base::kErrorAccessDenied},
        {WriteWholeFile("E:\\locked", text), base::kErrorAccessDenied},
        {CreateNewFile("E:\\file", text), base::kErrorFileExists},
        {CreateNewFile("E:\\no\\x", text), base::kErrorPathNotFound},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(one.first.code, one.second) << "case " << &one - cases;
        EXPECT_FALSE(one.first.Description().starts_with("System error")) << "has no text: " << one.second;
    }
    EXPECT_EQ(dir.Read("File"), "mine");
    EXPECT_EQ(dir.Read("locked"), "mine");
    EXPECT_EQ(dir.Count(), 2U);
    EXPECT_EQ(base::SystemError{4711}.Description(), "System error 4711.");
}

TEST(Files, WritesReplaceWhole) {
    const TestDir dir;
    dir.MakeFile("Setting.ini", "old and longer");
    fs::permissions(dir.Host("Setting.ini"), fs::perms{0640});
    const fs::perms before = fs::status(dir.Host("Setting.ini")).permissions();
    EXPECT_FALSE(WriteWholeFile("E:\\SETTING.INI", std::string("new")));
    EXPECT_EQ(dir.Read("Setting.ini"), "new");
    EXPECT_EQ(fs::status(dir.Host("Setting.ini")).permissions(), before);
    EXPECT_FALSE(WriteWholeFile("E:\\fresh", {}));
    EXPECT_EQ(dir.Read("fresh"), "");
    EXPECT_FALSE(CreateNewFile("E:\\created", std::string("new")));
    EXPECT_EQ(dir.Read("created"), "new");
    EXPECT_EQ(dir.Count(), 3U) << "the same file was replaced and no temporary one is left";
}

TEST(Files, LinksAreWrittenThroughButDeletedThemselves) {
    const TestDir dir;
    dir.MakeFile("elsewhere/real", "old");
    if (!tests::MakeLink("elsewhere/real", dir.Host("link")))
        GTEST_SKIP() << "no links here";
    EXPECT_FALSE(WriteWholeFile("E:\\link", std::string("new")));
    EXPECT_TRUE(fs::is_symlink(dir.Host("link")));
    EXPECT_FALSE(DeleteFile("E:\\link"));
    EXPECT_FALSE(fs::is_symlink(dir.Host("link")));
    EXPECT_EQ(dir.Read("elsewhere/real"), "new");
}

TEST(Files, CopyKeepsContentAndTime) {
    const TestDir dir;
    const std::string content(3'000'000, 'q');
    dir.MakeFile("a", content);
    tests::Protect(dir.Host("a"));
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

// The two media that refuse: one that is full and one that is write-protected. Both leave every file as it
// was.
TEST(Files, MediumThatTakesNothing) {
    const TestDir dir;
    dir.MakeFolder("disk");
    const tests::SmallDisk disk(dir.Host("disk"));
    if (!disk.IsMounted())
        GTEST_SKIP() << "mounting is not permitted here";
    const std::string tooMuch(100'000, 'x');
    dir.MakeFile("big", tooMuch);
    dir.MakeFile("disk/old", "[A]\nK=1\n");
    base::SystemError error;
    const auto folder = OutputFolder::Open("E:\\disk", error);
    ASSERT_NE(folder, nullptr);
    const auto refuses = [&](std::uint32_t code) {
        EXPECT_EQ(CopyFile("E:\\big", "E:\\disk\\old").code, code);
        EXPECT_EQ(WriteWholeFile("E:\\disk\\old", tooMuch).code, code);
        EXPECT_EQ(CreateNewFile("E:\\disk\\new", tooMuch).code, code);
        const std::span<const std::uint8_t> bytes(reinterpret_cast<const std::uint8_t*>(tooMuch.data()),
                                                  tooMuch.size());
        EXPECT_EQ(folder->WriteFile("old", bytes, std::nullopt).code, code);
        EXPECT_EQ(folder->WriteFile("new", bytes, std::nullopt).code, code);
        EXPECT_EQ(dir.Read("disk/old"), "[A]\nK=1\n");
        EXPECT_EQ(dir.Count("disk"), 1U);
    };
    refuses(base::kErrorDiskFull);
    ASSERT_TRUE(disk.Protect());
    refuses(base::kErrorWriteProtect);
    EXPECT_EQ(CreateFolder("E:\\disk\\folder").code, base::kErrorWriteProtect);
    EXPECT_EQ(DeleteFile("E:\\disk\\old").code, base::kErrorWriteProtect);
    EXPECT_EQ(folder->OpenOrCreate("folder", "folder", error), nullptr);
    EXPECT_EQ(error.code, base::kErrorWriteProtect);
    EXPECT_FALSE(CopyFile("E:\\disk\\old", "E:\\copy")) << "and can still be read";
}

TEST(FileReader, ReadsAtAnyPosition) {
    const TestDir dir;
    dir.MakeFile("f", "0123456789");
    base::SystemError error{99};
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
}

} // namespace
