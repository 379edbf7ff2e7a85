#include "platform/OutputFolder.h"

#include "support/HostFiles.h"
#include "support/TestDir.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::TestDir;
using namespace std::string_literals;
namespace fs = std::filesystem;

base::SystemError Write(OutputFolder& folder, std::string_view name, std::string_view content,
                        const std::optional<FileTimes>& times = std::nullopt) {
    return folder.WriteFile(name, {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()},
                            times);
}

std::unique_ptr<OutputFolder> OpenRoot() {
    base::SystemError error{99};
    auto folder = OutputFolder::Open("E:\\", error);
    EXPECT_FALSE(error);
    return folder;
}

TEST(OutputFolder, WritesAndReplacesInExactCase) {
    const TestDir dir;
    const auto folder = OpenRoot();
    EXPECT_FALSE(Write(*folder, "a.txt", "an older and longer file"));
    EXPECT_FALSE(Write(*folder, "a.txt", "new"));
    EXPECT_FALSE(Write(*folder, "A.TXT", "other"));
    EXPECT_FALSE(Write(*folder, "empty", ""));
    EXPECT_EQ(dir.Read("a.txt"), tests::kNamesAreBytes ? "new" : "other");
    EXPECT_EQ(dir.Read("A.TXT"), "other");
    EXPECT_EQ(dir.Read("empty"), "");
    {
        base::SystemError error;
        const auto unfinished = folder->CreateFile("a.txt", error);
        ASSERT_TRUE(unfinished);
        EXPECT_FALSE(unfinished->Write(std::array<std::uint8_t, 4>{'h', 'a', 'l', 'f'}));
    }
    EXPECT_EQ(dir.Count(), tests::kNamesAreBytes ? 3U : 2U);
    EXPECT_EQ(dir.Read("A.TXT"), "other");
}

TEST(OutputFolder, GivesTheTimesOrTheTimeOfWriting) {
    const TestDir dir;
    const auto folder = OpenRoot();
    FileTimes times;
    ASSERT_TRUE(SystemTimeToFileTime({2005, 3, 4, 10, 20, 30}, times.lastWrite));
    ASSERT_TRUE(SystemTimeToFileTime({1980, 1, 1, 0, 0, 0}, times.lastAccess));
    const auto written = [&](const char* name) {
        return std::chrono::file_clock::to_sys(fs::last_write_time(dir.Host(name))).time_since_epoch() /
               std::chrono::seconds(1);
    };
    for (int i = 0; i < 2; ++i) { // new, then replaced
        EXPECT_FALSE(Write(*folder, "dated", "x", times));
        EXPECT_EQ(written("dated"), 1109931630);
    }
    EXPECT_FALSE(Write(*folder, "dated", "x"));
    EXPECT_LE(std::abs(written("dated") - std::time(nullptr)), 2);
    EXPECT_FALSE(Write(*folder, "first moment", "x", FileTimes{}));
}

TEST(OutputFolder, RefusesWhatIsNotOneName) {
    const TestDir dir;
    const auto folder = OpenRoot();
    base::SystemError error;
    for (const std::string& name : {""s, "."s, ".."s, "a/b"s, "a\\b"s, "/etc"s, "a\0b"s}) {
        EXPECT_EQ(Write(*folder, name, "x").code, base::kErrorInvalidName) << name;
        EXPECT_EQ(folder->OpenOrCreate(name, "ok", error), nullptr);
        EXPECT_EQ(error.code, base::kErrorInvalidName);
        EXPECT_EQ(folder->OpenOrCreate("ok", name, error), nullptr);
        EXPECT_EQ(error.code, base::kErrorInvalidName);
    }
    EXPECT_EQ(Write(*folder, std::string(300, 'n'), "x").code, base::kErrorNameTooLong);
    EXPECT_EQ(dir.Count(), 0U);
}

TEST(OutputFolder, WhatStandsInTheWayStays) {
    const TestDir dir;
    dir.MakeFolder("folder");
    dir.MakeFile("locked", "mine");
    tests::Protect(dir.Host("locked"));
    const auto folder = OpenRoot();
    EXPECT_EQ(Write(*folder, "folder", "x").code, base::kErrorAccessDenied);
    EXPECT_EQ(Write(*folder, "locked", "x").code, base::kErrorAccessDenied);
    base::SystemError error;
    EXPECT_EQ(folder->OpenOrCreate("locked", "locked", error), nullptr);
    EXPECT_TRUE(error);
    EXPECT_EQ(dir.Read("locked"), "mine");
    EXPECT_EQ(dir.Count(), 2U);
}

TEST(OutputFolder, LinksLeadNowhere) {
    const TestDir dir;
    dir.MakeFile("outside/victim", "safe");
    dir.MakeFolder("target");
    if (!tests::MakeLink("../outside/victim", dir.Host("target/link")) ||
        !tests::MakeLink("../outside", dir.Host("target/Folder")))
        GTEST_SKIP() << "no links here";
    base::SystemError error;
    const auto folder = OutputFolder::Open("E:\\target", error);
    EXPECT_FALSE(Write(*folder, "link", "new"));
    EXPECT_FALSE(fs::is_symlink(dir.Host("target/link"))) << "the link itself is replaced";
    EXPECT_EQ(dir.Read("target/link"), "new");
    for (const char* name : {"Folder", "FOLDER"}) {
        EXPECT_EQ(folder->OpenOrCreate(name, name, error), nullptr) << name;
        EXPECT_TRUE(error);
    }
    EXPECT_EQ(dir.Count("target"), 2U);
    EXPECT_EQ(dir.Count("outside"), 1U);
    EXPECT_EQ(dir.Read("outside/victim"), "safe");
}

TEST(OutputFolder, FoldersAreFoundInAnyCaseAndMadeAsAsked) {
    const TestDir dir;
    dir.MakeFolder("Docs");
    const auto folder = OpenRoot();
    base::SystemError error{99};
    const auto docs = folder->OpenOrCreate("docs", "DOCS", error);
    ASSERT_NE(docs, nullptr);
    EXPECT_FALSE(error);
    EXPECT_FALSE(Write(*docs, "f", "x"));
    EXPECT_EQ(dir.Read("Docs/f"), "x");
    auto made = folder->OpenOrCreate("Über", "ÜBER", error);
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(fs::is_directory(dir.Host("ÜBER")));
    EXPECT_NE(folder->OpenOrCreate("über", "x", error), nullptr) << "the one made before is found";
    EXPECT_EQ(dir.Count(), 2U);
    made.reset();
    fs::remove(dir.Host("ÜBER"));
    EXPECT_NE(folder->OpenOrCreate("über", "again", error), nullptr) << "and made again once it has gone";
    EXPECT_TRUE(fs::is_directory(dir.Host("again")));
}

TEST(OutputFolder, StaysWithTheFolderNotThePath) {
    const TestDir dir;
    dir.MakeFolder("target");
    dir.MakeFolder("elsewhere");
    base::SystemError error;
    const auto folder = OutputFolder::Open("E:\\target", error);
    fs::rename(dir.Host("target"), dir.Host("moved"));
    if (!tests::MakeLink("elsewhere", dir.Host("target")))
        dir.MakeFolder("target");
    EXPECT_FALSE(Write(*folder, "f", "x"));
    EXPECT_FALSE(Write(*folder, "f", "xy"));
    EXPECT_NE(folder->OpenOrCreate("sub", "sub", error), nullptr);
    EXPECT_EQ(dir.Read("moved/f"), "xy");
    EXPECT_EQ(dir.Count("moved"), 2U);
    EXPECT_EQ(dir.Count("target") + dir.Count("elsewhere"), 0U);
}

} // namespace
