// What the services do on Windows itself; the rules that they share with the other system are in the other
// files.

#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "platform/FileOperations.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "platform/HostPath.h"
#include "platform/OutputFolder.h"
#include "platform/Process.h"
#include "platform/SpecialFolders.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>
#include <map>
#include <span>

namespace {

using namespace platform;
using tests::ScopedVariable;
using tests::TestDir;

std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Lets everything go on and remembers what failed.
class Watcher final : public FileOperationObserver {
  public:
    bool Proceed(const FileStep& step) override {
        entries += step.entries;
        return entries < stopAfter;
    }

    void Failed(const std::string& path, SystemError error) override { failures[path] = error.code; }

    std::uint64_t entries = 0;
    std::uint64_t stopAfter = 1'000'000;
    std::map<std::string, std::uint32_t> failures;
};

TEST(WindowsServices, PathsOfTheHost) {
    const TestDir dir;
    const std::string root = HostPathOf("E:\\");
    EXPECT_EQ(HostPathOf("e:/a\\.\\b\\..\\c\\"), root + "\\a\\c");
    EXPECT_EQ(PathFromHost(root + "\\a\\c"), "E:\\a\\c");
    EXPECT_EQ(HostPathOf("Q:\\x"), "");
    const ScopedVariable native("PELLARION_DRIVES", "");
    EXPECT_EQ(HostPathOf("c:/windows"), "C:\\windows");
    EXPECT_EQ(HostPathOf("\\\\server\\share\\x"), "\\\\server\\share\\x");
    EXPECT_EQ(GetDriveType("C:\\"), DriveType::kFixed);
    EXPECT_TRUE(GetDriveSpace("C:\\"));
    EXPECT_FALSE(GetSpecialFolderPath(kCsidlPersonal).empty());
    EXPECT_EQ(GetVersionRecord().platformId, 2U) << "the NT family";
    EXPECT_TRUE(FolderExists(ProgramFolder()));
}

TEST(WindowsServices, FilesAreReplacedWhole) {
    const TestDir dir;
    EXPECT_FALSE(WriteWholeFile("E:\\a.txt", std::string_view("first")));
    EXPECT_FALSE(WriteWholeFile("E:\\A.TXT", std::string_view("second")));
    EXPECT_EQ(dir.Read("a.txt"), "second");
    EXPECT_EQ(CreateNewFile("E:\\a.txt", std::string_view("x")).code, kErrorFileExists);
    EXPECT_EQ(CreateFolder("E:\\a.txt").code, kErrorAlreadyExists);
    EXPECT_EQ(CreateFolder("E:\\none\\b").code, kErrorPathNotFound);
    EXPECT_FALSE(CopyFile("E:\\a.txt", "E:\\b.txt"));
    EXPECT_EQ(CopyFile("E:\\a.txt", "E:\\A.txt").code, kErrorSharingViolation) << "the same file";
    SystemError error;
    EXPECT_EQ(ReadWholeFile("E:\\b.txt", 100, error), "second");
    EXPECT_EQ(ReadWholeFile("E:\\b.txt", 5, error), std::nullopt);
    EXPECT_EQ(error.code, kErrorInvalidData);
    EXPECT_FALSE(DeleteFile("E:\\b.txt"));
    EXPECT_EQ(DeleteFile("E:\\b.txt").code, kErrorFileNotFound);
    EXPECT_EQ(dir.Count(), 1U) << "nothing temporary is left";
}

TEST(WindowsServices, LongPathsAndOddNames) {
    const TestDir dir;
    const std::string name(200, 'n');
    std::string folder = "E:";
    for (int level = 0; level < 3; ++level) {
        folder += "\\" + name;
        ASSERT_FALSE(CreateFolder(folder));
    }
    const std::string file = folder + "\\\xC3\xA4\xE2\x82\xAC.txt";
    ASSERT_FALSE(WriteWholeFile(file, std::string_view("deep")));
    const ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    SystemError error;
    const auto listing = FindFiles::Start(folder, error);
    ASSERT_TRUE(listing);
    FindData data;
    while (listing->Next(data) && (data.name == "." || data.name == "..")) {
    }
    EXPECT_EQ(data.name, "\xC3\xA4\xE2\x82\xAC.txt");
    EXPECT_EQ(data.sizeLow, 4U);
    const ScopedVariable cyrillic("PELLARION_ANSI_CODEPAGE", "1251");
    const auto entry = FindEntry(file);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "?\xE2\x82\xAC.txt") << "what the code page lacks";
    Watcher watcher;
    EXPECT_EQ(DeleteTree("E:\\" + name, watcher), FileOutcome::kDone);
    EXPECT_EQ(dir.Count(), 0U);
}

TEST(WindowsServices, OutputIsWrittenBesideItsPlace) {
    const TestDir dir;
    dir.MakeFolder("out/folder");
    SystemError error;
    const auto out = OutputFolder::Open("E:\\out", error);
    ASSERT_TRUE(out);
    FileTime time;
    ASSERT_TRUE(SystemTimeToFileTime({2005, 3, 4, 10, 20, 30}, time));
    EXPECT_FALSE(out->WriteFile("a.txt", Bytes("one"), FileTimes{time, time, time}));
    EXPECT_EQ(FindEntry("E:\\out\\a.txt")->lastWrite, time);
    EXPECT_FALSE(out->WriteFile("a.txt", Bytes("longer"), std::nullopt));
    EXPECT_EQ(dir.Read("out/a.txt"), "longer");
    EXPECT_TRUE(out->WriteFile("folder", Bytes("x"), std::nullopt)) << "a folder is not replaced";
    for (const char* name : {"", "..", "a\\b", "a/b", "a:b"})
        EXPECT_EQ(out->WriteFile(name, Bytes("x"), std::nullopt).code, kErrorInvalidName) << name;
    {
        const auto unfinished = out->CreateFile("b.txt", error);
        ASSERT_TRUE(unfinished);
        EXPECT_FALSE(unfinished->Write(Bytes("half")));
    }
    const auto below = out->OpenOrCreate("FOLDER", "FOLDER", error);
    ASSERT_TRUE(below);
    EXPECT_FALSE(below->WriteFile("c.txt", Bytes("c"), std::nullopt));
    EXPECT_EQ(dir.Read("out/folder/c.txt"), "c") << "one folder in any letter case";
    EXPECT_EQ(dir.Count("out"), 2U) << "a.txt and folder";
}

TEST(WindowsServices, TreesAreCopiedRenamedAndDeleted) {
    const TestDir dir;
    for (const char* name : {"from/a", "from/deep/b", "from/deep/c"})
        dir.MakeFile(name, name);
    dir.MakeFolder("to/from");
    dir.MakeFile("to/from/a", "old");
    Watcher watcher;
    EXPECT_EQ(CopyTree("E:\\from", "E:\\to", watcher), FileOutcome::kDone);
    EXPECT_EQ(dir.Read("to/from/a"), "from/a");
    EXPECT_EQ(dir.Read("to/from/deep/c"), "from/deep/c");
    EXPECT_EQ(CopyTree("E:\\from", "E:\\", watcher), FileOutcome::kDone) << "onto itself";
    EXPECT_EQ(dir.Read("from/a"), "from/a");
    EXPECT_EQ(CopyTree("E:\\from", "E:\\from\\deep", watcher), FileOutcome::kFailed) << "into itself";
    EXPECT_EQ(watcher.failures.begin()->second, kErrorBadPathName);
    EXPECT_EQ(RenameEntry("E:\\to\\from\\a", "E:\\to\\from\\deep").code, kErrorAlreadyExists);
    EXPECT_EQ(RenameEntry("E:\\to\\from\\a", "E:\\to\\from\\a?").code, kErrorInvalidName);
    EXPECT_FALSE(RenameEntry("E:\\to\\from\\a", "E:\\to\\from\\A")) << "the letter case alone";
    EXPECT_TRUE(IsWithin("E:\\to", "E:\\TO\\from\\deep"));
    EXPECT_FALSE(IsWithin("E:\\to\\from", "E:\\to"));
    Watcher stopped;
    stopped.stopAfter = 1;
    EXPECT_EQ(DeleteTree("E:\\from", stopped), FileOutcome::kStopped);
    EXPECT_TRUE(FolderExists("E:\\from"));
    EXPECT_EQ(DeleteTree("E:\\to", watcher), FileOutcome::kDone);
    EXPECT_FALSE(FolderExists("E:\\to"));
}

} // namespace
