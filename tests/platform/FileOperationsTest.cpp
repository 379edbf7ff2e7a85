#include "base/FileName.h"
#include "platform/FileOperationsFixture.h"
#include "platform/TreeSize.h"
#include "support/HostFiles.h"
#include "support/SmallDisk.h"

#include <algorithm>
#include <chrono>
#include <map>

namespace {

namespace fs = std::filesystem;
using base::Outcome;
using tests::Failures;
using tests::FileOperations;

TEST_F(FileOperations, CopyKeepsContentTimesAndPermissions) {
    dir_.MakeFile("from/inner/run.sh", std::string(5'000'000, 'x'));
    dir_.MakeFile("from/empty");
    dir_.MakeFolder("to");
    const auto then = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    fs::last_write_time(dir_.Host("from/inner/run.sh"), then);
    fs::permissions(dir_.Host("from/inner/run.sh"), fs::perms(0540));
    fs::permissions(dir_.Host("from/inner"), fs::perms(0750));
    ASSERT_EQ(Copy("from", "to"), Outcome::kDone);
    EXPECT_EQ(dir_.Read("to/from/inner/run.sh"), dir_.Read("from/inner/run.sh"));
    EXPECT_EQ(dir_.Read("to/from/empty"), "");
    for (const std::string name : {"from/inner/run.sh", "from/inner"}) {
        EXPECT_EQ(fs::status(dir_.Host("to/" + name)).permissions(),
                  fs::status(dir_.Host(name)).permissions());
        EXPECT_EQ(fs::last_write_time(dir_.Host("to/" + name)), fs::last_write_time(dir_.Host(name))) << name;
    }
    EXPECT_EQ(watcher_.entries, 4U);
    EXPECT_EQ(watcher_.bytes, 5'000'000U);
}

TEST_F(FileOperations, CopyReplacesFilesAndFillsFolders) {
    dir_.MakeFile("from/a", "new");
    dir_.MakeFile("to/from/a", "old");
    dir_.MakeFile("to/from/b", "kept");
    tests::Protect(dir_.Host("to/from/a"));
    EXPECT_EQ(Copy("from", "to"), Outcome::kDone);
    EXPECT_EQ(dir_.Read("to/from/a"), "new");
    EXPECT_EQ(dir_.Read("to/from/b"), "kept");
    // A link in the place of the target gives way; what it points at stays.
    dir_.MakeFile("elsewhere", "safe");
    fs::remove(dir_.Host("to/from/a"));
    if (!tests::MakeLink(dir_.Host("elsewhere"), dir_.Host("to/from/a")))
        GTEST_SKIP() << "no links here";
    EXPECT_EQ(Copy("from/a", "to/from"), Outcome::kDone);
    EXPECT_EQ(dir_.Read("elsewhere"), "safe");
    EXPECT_FALSE(fs::is_symlink(dir_.Host("to/from/a")));
}

TEST_F(FileOperations, CopyNeverPutsAFileForAFolder) {
    dir_.MakeFile("x/name", "file");
    dir_.MakeFile("y/name/inner", "deep");
    EXPECT_EQ(Copy("x/name", "y"), Outcome::kFailed);
    EXPECT_EQ(Copy("y/name", "x"), Outcome::kFailed);
    EXPECT_EQ(watcher_.failures, (Failures{{"E:\\x\\name", base::kErrorAlreadyExists}}));
    EXPECT_EQ(dir_.Read("x/name"), "file");
    EXPECT_EQ(dir_.Read("y/name/inner"), "deep");
}

TEST_F(FileOperations, CopyOntoItselfAndIntoItself) {
    dir_.MakeFile("a/file", "content");
    EXPECT_EQ(Copy("a/file", "a"), Outcome::kDone);
    EXPECT_EQ(Copy("a", ""), Outcome::kDone);
    EXPECT_EQ(dir_.Read("a/file"), "content");
    EXPECT_EQ(dir_.Count("a"), 1U);
    dir_.MakeFolder("a/b");
    EXPECT_TRUE(platform::IsWithin("E:\\a", "E:\\a\\b"));
    EXPECT_TRUE(platform::IsWithin("E:\\a", "E:\\A"));
    EXPECT_FALSE(platform::IsWithin("E:\\a\\b", "E:\\a"));
    // Even when asked to, it ends, and copies only what was there.
    EXPECT_EQ(Copy("a", "a/b"), Outcome::kFailed);
    EXPECT_EQ(dir_.Read("a/b/a/file"), "content");
    EXPECT_EQ(dir_.Read("a/file"), "content");
}

TEST_F(FileOperations, CopyTakesWhatLinksPointAtAndNeverLoops) {
    dir_.MakeFile("real/inner/file", "content");
    dir_.MakeFile("from/x");
    dir_.MakeFolder("to");
    if (!tests::MakeLink("../real/inner/file", dir_.Host("from/file")))
        GTEST_SKIP() << "no links here";
    tests::MakeLink("../real/inner", dir_.Host("from/folder"));
    tests::MakeLink("..", dir_.Host("from/up"));
    tests::MakeLink("nowhere", dir_.Host("from/broken"));
    tests::MakeLink("self", dir_.Host("from/self"));
    EXPECT_EQ(Copy("from", "to"), Outcome::kFailed);
    EXPECT_EQ(dir_.Read("to/from/file"), "content");
    EXPECT_EQ(dir_.Read("to/from/folder/file"), "content");
    EXPECT_FALSE(fs::is_symlink(dir_.Host("to/from/folder")));
    EXPECT_TRUE(dir_.Exists("to/from/x"));
    std::map<std::string, std::uint32_t> failed(watcher_.failures.begin(), watcher_.failures.end());
    EXPECT_EQ(failed["E:\\from\\broken"], base::kErrorFileNotFound);
    EXPECT_EQ(failed["E:\\from\\self"], base::kErrorBadPathName);
    EXPECT_EQ(failed["E:\\from\\up\\from"], base::kErrorBadPathName);
}

TEST_F(FileOperations, CopyStoppedHalfWayLeavesEveryFileWhole) {
    const std::string old(100, 'o');
    const std::string fresh(20'000'000, 'n');
    dir_.MakeFile("from/big", fresh);
    dir_.MakeFile("to/big", old);
    watcher_ = {};
    watcher_.goOn = [this](const std::string&) { return watcher_.bytes == 0; };
    EXPECT_EQ(platform::CopyTree("E:\\from\\big", "E:\\to", watcher_), Outcome::kStopped);
    const auto now = dir_.Read("to/big");
    // Where the file system clones, the copy is over before it can be stopped.
    EXPECT_TRUE(now == old || now == fresh);
    EXPECT_TRUE(watcher_.bytes == fresh.size() || now == old);
    EXPECT_EQ(dir_.Read("from/big"), fresh);
    EXPECT_TRUE(IsClean("to"));
}

TEST_F(FileOperations, CopyGoesOnPastWhatIsNoFile) {
    dir_.MakeFile("from/a", "a");
    dir_.MakeFile("from/z", "z");
    dir_.MakeFolder("to");
    Failures expected;
    if (tests::MakePipe(dir_.Host("from/pipe")) && tests::MakeLink("/dev/zero", dir_.Host("from/device")))
        expected = {{"E:\\from\\device", base::kErrorAccessDenied},
                    {"E:\\from\\pipe", base::kErrorAccessDenied}};
    EXPECT_EQ(Copy("from", "to"), expected.empty() ? Outcome::kDone : Outcome::kFailed);
    std::ranges::sort(watcher_.failures);
    EXPECT_EQ(watcher_.failures, expected);
    EXPECT_EQ(dir_.Read("to/from/z"), "z");
    EXPECT_EQ(dir_.Count("to/from"), 2U);
    EXPECT_EQ(Copy("gone", "to"), Outcome::kFailed);
    EXPECT_EQ(watcher_.failures, (Failures{{"E:\\gone", base::kErrorFileNotFound}}));
    EXPECT_EQ(Copy("from/a", "nowhere"), Outcome::kFailed);
}

TEST_F(FileOperations, CopyEndsWhereItsMediumDoes) {
    dir_.MakeFolder("disk");
    const std::string content(20'000, 'c');
    for (const char* name : {"1", "2", "3", "4", "5", "6"})
        dir_.MakeFile("from/" + std::string(name), content);
    // What is there afterwards is whole, and nothing but the copies.
    const auto wholeFiles = [&](const std::string& folder) {
        std::size_t files = 0;
        for (const auto& entry : fs::directory_iterator(dir_.Host(folder)))
            files += dir_.Read(folder + "/" + entry.path().filename().string()) == content ? 1U : 100U;
        return files;
    };
    {
        const tests::SmallDisk disk(dir_.Host("disk"));
        if (!disk.IsMounted())
            GTEST_SKIP() << "mounting is not permitted here";
        EXPECT_EQ(Copy("from", "disk"), Outcome::kFailed);
        ASSERT_EQ(watcher_.failures.size(), 1U) << "the rest is not tried";
        EXPECT_EQ(watcher_.failures[0].second, base::kErrorDiskFull);
        EXPECT_EQ(wholeFiles("disk/from"), 3U);
        ASSERT_TRUE(disk.Protect());
        for (const Outcome outcome : {Copy("from/1", "disk"), Delete("disk/from")}) {
            EXPECT_EQ(outcome, Outcome::kFailed);
            EXPECT_EQ(watcher_.failures[0].second, base::kErrorWriteProtect);
        }
        EXPECT_EQ(wholeFiles("disk/from"), 3U);
    }
    tests::SmallDisk disk(dir_.Host("disk"), 1U << 20);
    dir_.MakeFolder("to");
    ASSERT_EQ(Copy("from", "disk"), Outcome::kDone);
    watcher_ = {};
    watcher_.goOn = [&](const std::string&) {
        if (watcher_.entries == 2 && disk.IsMounted())
            disk.PullOut();
        return true;
    };
    EXPECT_EQ(platform::CopyTree("E:\\disk\\from", "E:\\to", watcher_), Outcome::kFailed);
    EXPECT_EQ(watcher_.failures, (Failures{{"E:\\disk", base::kErrorNotReady}})) << "the rest is not tried";
    EXPECT_EQ(wholeFiles("to/from"), 2U);
    EXPECT_EQ(wholeFiles("from"), 6U);
}

TEST_F(FileOperations, CopyOntoAMediumThatIsPulledOutLeavesWholeFiles) {
    const std::string content(6'000'000, 'c');
    for (const char* name : {"1", "2", "3"})
        dir_.MakeFile("from/" + std::string(name), content);
    dir_.MakeFolder("disk");
    for (const bool duringFile : {true, false}) { // or between two
        tests::SmallDisk disk(dir_.Host("disk"), 64U << 20);
        if (!disk.IsMounted())
            GTEST_SKIP() << "mounting is not permitted here";
        watcher_ = {};
        watcher_.goOn = [&](const std::string&) {
            if (watcher_.entries == 1 && disk.IsMounted() && (watcher_.bytes > content.size()) == duringFile)
                disk.PullOut();
            return true;
        };
        EXPECT_EQ(platform::CopyTree("E:\\from", "E:\\disk", watcher_), Outcome::kFailed);
        EXPECT_EQ(watcher_.failures, (Failures{{"E:\\disk", base::kErrorNotReady}}));
        EXPECT_EQ(dir_.Count("disk"), 0U) << "nothing goes to what lies below";
        int whole = 0;
        for (const auto& entry : fs::directory_iterator(disk.AfterPulling() / "from")) {
            if (entry.path().extension() == ".tmp")
                continue; // could not be taken back any more
            ++whole;
            EXPECT_EQ(fs::file_size(entry), content.size()) << entry.path();
        }
        EXPECT_EQ(whole, 1);
        EXPECT_EQ(dir_.Read("from/2"), content);
    }
}

TEST_F(FileOperations, CopyEndsWhenAnotherFolderStandsInTheTargetsPlace) {
    for (const char* name : {"1", "2", "3"})
        dir_.MakeFile("from/" + std::string(name), std::string(6'000'000, 'c'));
    for (const bool duringFile : {true, false}) { // or between two
        dir_.MakeFolder("to");
        std::error_code renaming{1, std::generic_category()};
        watcher_ = {};
        watcher_.goOn = [&](const std::string&) {
            if (renaming && watcher_.entries == 1 && (watcher_.bytes > 6'000'000) == duringFile) {
                fs::rename(dir_.Host("to"), dir_.Host("away"), renaming);
                if (!renaming)
                    dir_.MakeFolder("to");
            }
            return true;
        };
        const Outcome outcome = platform::CopyTree("E:\\from", "E:\\to", watcher_);
        if (renaming)
            GTEST_SKIP() << "a folder that is in use keeps its name here";
        EXPECT_EQ(outcome, Outcome::kFailed);
        EXPECT_EQ(watcher_.failures, (Failures{{"E:\\to", base::kErrorNotReady}})) << "the rest is not tried";
        EXPECT_EQ(dir_.Count("to"), 0U);
        EXPECT_FALSE(dir_.Exists("away/from/2"));
        EXPECT_EQ(fs::file_size(dir_.Host("away/from/1")), 6'000'000U);
        fs::remove_all(dir_.Host("away"));
    }
}

TEST_F(FileOperations, DeleteTakesLinksAndNotWhatTheyPointAt) {
    dir_.MakeFile("precious/file", "content");
    dir_.MakeFile("doomed/inner/file");
    tests::Protect(dir_.Host("doomed/inner/file"));
    const bool hasLinks = tests::MakeLink(dir_.Host("precious"), dir_.Host("doomed/link")) &&
                          tests::MakeLink("loop", dir_.Host("doomed/loop")) &&
                          tests::MakeLink(dir_.Host("precious"), dir_.Host("link"));
    EXPECT_EQ(Delete("doomed"), Outcome::kDone);
    EXPECT_FALSE(dir_.Exists("doomed"));
    EXPECT_EQ(watcher_.entries, hasLinks ? 5U : 3U);
    EXPECT_EQ(Delete("link"), hasLinks ? Outcome::kDone : Outcome::kFailed);
    EXPECT_EQ(dir_.Read("precious/file"), "content");
}

TEST_F(FileOperations, DeleteStopsAndFailsCleanly) {
    for (const char* name : {"a", "b", "c", "d"})
        dir_.MakeFile("doomed/" + std::string(name));
    watcher_ = {};
    watcher_.goOn = [this](const std::string&) { return watcher_.entries < 2; };
    EXPECT_EQ(platform::DeleteTree("E:\\doomed", watcher_), Outcome::kStopped);
    EXPECT_EQ(dir_.Count("doomed"), 2U);
    EXPECT_EQ(Delete("gone"), Outcome::kFailed);
    EXPECT_EQ(watcher_.failures, (Failures{{"E:\\gone", base::kErrorFileNotFound}}));
}

TEST_F(FileOperations, RenameRefusesToReplace) {
    dir_.MakeFile("a.txt", "a");
    dir_.MakeFile("Taken.txt", "t");
    EXPECT_EQ(Rename("a.txt", "taken.TXT"), base::kErrorAlreadyExists);
    EXPECT_EQ(Rename("a.txt", "b.txt"), 0U);
    EXPECT_EQ(dir_.Read("b.txt"), "a");
    EXPECT_EQ(Rename("b.txt", "B.TXT"), 0U) << "only the letter case changes";
    EXPECT_TRUE(dir_.Exists("B.TXT"));
    fs::create_hard_link(dir_.Host("B.TXT"), dir_.Host("other"));
    EXPECT_EQ(Rename("B.TXT", "other"), base::kErrorAlreadyExists);
    EXPECT_EQ(dir_.Count(), 3U);
    EXPECT_EQ(dir_.Read("Taken.txt"), "t");
    EXPECT_EQ(Rename("gone", "new"), base::kErrorFileNotFound);
    dir_.MakeFolder("folder");
    EXPECT_EQ(Rename("folder", "Folder 2"), 0U);
    EXPECT_TRUE(dir_.Exists("Folder 2"));
}

TEST_F(FileOperations, NamesForEverySystem) {
    dir_.MakeFile("a");
    for (const char* name :
         {"", ".", "..", "b:c", "b?", "b*", "b|", "b\"", "<b", "b>", "b/c", "b.", "b ", "b\tc"})
        EXPECT_FALSE(base::IsFileName(name)) << name;
    for (const char* name : {".hidden", "b c", "Käse", "日本", "b.c"})
        EXPECT_TRUE(base::IsFileName(name)) << name;
    EXPECT_EQ(Rename("a", "b:c"), base::kErrorInvalidName);
    EXPECT_EQ(Rename("a", ".."), base::kErrorInvalidName);
    EXPECT_TRUE(dir_.Exists("a"));
    EXPECT_EQ(base::FolderOf("E:\\a"), "E:\\");
    EXPECT_EQ(base::FolderOf("E:\\a\\b"), "E:\\a");
    EXPECT_EQ(base::LastComponent("E:\\a\\b"), "b");
}

TEST_F(FileOperations, TreeSizeCountsWithoutFollowingLinks) {
    dir_.MakeFile("from/a", "12345");
    dir_.MakeFile("from/deep/b", "123");
    const bool hasLinks = tests::MakeLink("..", dir_.Host("from/deep/up"));
    platform::TreeSize size("E:\\from");
    while (size.CountSome(1)) {
    }
    EXPECT_EQ(size.Files(), hasLinks ? 3U : 2U);
    EXPECT_EQ(size.Folders(), 1U);
    EXPECT_EQ(size.Bytes(), 8U);
    EXPECT_EQ(platform::TreeSize("E:\\from\\a").Bytes(), 5U);
    EXPECT_EQ(platform::TreeSize("E:\\gone").Files(), 0U);
}

} // namespace
