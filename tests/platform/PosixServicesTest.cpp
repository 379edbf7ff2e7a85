// What the services do on POSIX systems alone; the rules that they share with the other system are in the
// other files.

#include "platform/FileOperationsFixture.h"
#include "platform/FindFiles.h"
#include "platform/OpenFolder.h"
#include "platform/OutputFolder.h"
#include "platform/StagedFile.h"

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using base::Outcome;
using base::SystemError;
using platform::OutputFolder;
using platform::StagedFile;
using tests::Failures;
using tests::FileOperations;
using tests::TestDir;

TEST_F(FileOperations, AFileTooLargeForItsMediumKeepsNoOtherBack) {
    dir_.MakeFile("from/large", std::string(300'000, 'l'));
    for (const char* name : {"from/1", "from/2", "from/3"})
        dir_.MakeFile(name, "small");
    dir_.MakeFolder("to");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{100'000, before.rlim_max};
    const auto signal = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const Outcome outcome = Copy("from", "to");
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signal);
    EXPECT_EQ(outcome, Outcome::kFailed);
    EXPECT_EQ(watcher_.failures, (Failures{{"E:\\from\\large", base::kErrorFileTooLarge}}));
    EXPECT_EQ(dir_.Count("to/from"), 3U);
}

TEST(FindFiles, WhatHasGoneMeanwhileIsLeftOut) {
    const TestDir dir;
    for (int i = 0; i < 300; ++i)
        dir.MakeFile("Docs/f" + std::to_string(i));
    SystemError error;
    const auto search = platform::FindFiles::Start("E:\\Docs", error);
    platform::FindData data;
    for (const char* name : {".", "..", "f"}) {
        ASSERT_TRUE(search->Next(data));
        EXPECT_TRUE(data.name.starts_with(name)) << data.name;
    }
    fs::remove_all(dir.Host("Docs"));
    EXPECT_FALSE(search->Next(data)) << data.name << " was read ahead";
}

/// How many folders called `name` lie in one another at a place.
int DepthOf(const fs::path& place, const std::string& name) {
    int depth = -1;
    for (int folder = ::open(place.c_str(), O_RDONLY | O_DIRECTORY); folder >= 0; ++depth) {
        const int inner = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = inner;
    }
    return depth;
}

TEST_F(FileOperations, PathsLongerThanTheSystemTakes) {
    const std::string name(250, 'd');
    dir_.MakeFolder("from");
    dir_.MakeFolder("to");
    int folder = ::open(dir_.Host("from").c_str(), O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < 20; ++depth) {
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0700), 0);
        const int inner = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = inner;
    }
    ::close(folder);
    EXPECT_EQ(Copy("from", "to"), Outcome::kDone);
    EXPECT_EQ(watcher_.entries, 21U);
    for (const char* tree : {"from", "to/from"})
        EXPECT_EQ(DepthOf(dir_.Host(tree), name), 20) << tree;
    for (const char* tree : {"to", "from"}) {
        EXPECT_EQ(Delete(tree), Outcome::kDone);
        EXPECT_FALSE(dir_.Exists(tree));
    }
}

TEST_F(FileOperations, CopyKeepsNamesThatAreNoText) {
    dir_.MakeFile("from/latin\xE4", "1");
    dir_.MakeFile("from/" + std::string(255, 'n'), "2");
    dir_.MakeFolder("to");
    EXPECT_EQ(Copy("from", "to"), Outcome::kDone);
    EXPECT_EQ(dir_.Read("to/from/latin\xE4"), "1");
    EXPECT_EQ(dir_.Read("to/from/" + std::string(255, 'n')), "2");
}

TEST(OutputFolder, WorkingFolderIsReachedFromTheRoot) {
    const TestDir dir;
    const tests::ScopedVariable drives("PELLARION_DRIVES", "");
    const tests::ScopedVariable cache("XDG_CACHE_HOME", dir.Host("cache").string());
    SystemError error{99};
    const auto root = OutputFolder::Open("C:\\", error);
    ASSERT_NE(root, nullptr);
    const auto working = root->OpenOrCreate("PELLARION", "PELLARION", error);
    ASSERT_NE(working, nullptr);
    EXPECT_FALSE(working->WriteFile("f", {}, std::nullopt));
    EXPECT_TRUE(dir.Exists("cache/pellarion/f"));
}

// As when a medium is pulled out and another one takes its place: what the open folder still takes would be
// lost.
TEST(StagedFile, AFolderThatIsNoLongerInPlaceTakesNoFile) {
    const TestDir dir;
    dir.MakeFolder("target");
    SystemError error{99};
    auto file = StagedFile::Create("E:\\target", "new", error);
    ASSERT_NE(file, nullptr) << error.Description();
    EXPECT_FALSE(file->WriteAt(0, std::vector<std::uint8_t>(10, 'x')));
    fs::rename(dir.Host("target"), dir.Host("pulled"));
    dir.MakeFolder("target");
    EXPECT_EQ(file->Commit().code, base::kErrorNotReady);
    file.reset();
    EXPECT_EQ(dir.Count("target") + dir.Count("pulled"), 0U);
}

// A file of one's own is not open to others while it is copied, and settings keep who may read them.
TEST(NewFile, HasThePermissionsThatItsUseAsksFor) {
    const TestDir dir;
    dir.MakeFile("private", "old");
    fs::permissions(dir.Host("private"), fs::perms{0600});
    SystemError error;
    const auto root = platform::OpenFolder::At("E:\\", platform::Links::kFollowed, error);
    ASSERT_FALSE(error);
    const auto permissions = [&](platform::NewFile& file) {
        EXPECT_FALSE(file.TakeName("f", platform::Replacing::kWritable, platform::Durability::kLater));
        return fs::status(dir.Host("f")).permissions();
    };
    auto copy = root.StartFile(platform::NewFileUse::kCopy, error);
    EXPECT_EQ(permissions(copy), fs::perms{0600});
    auto replacement = root.StartFile(platform::NewFileUse::kOutput, error);
    replacement.KeepOwnership("private");
    EXPECT_EQ(permissions(replacement), fs::perms{0600});
}

} // namespace
