#include "platform/FindFiles.h"

#include "platform/Files.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>
#include <map>
#include <vector>

namespace {

using namespace platform;
using tests::TestDir;
namespace fs = std::filesystem;

std::vector<FindData> FindAll(const std::string& folder) {
    SystemError error{99};
    std::vector<FindData> all;
    const auto search = FindFiles::Start(folder, error);
    EXPECT_FALSE(error) << folder;
    for (FindData data; search != nullptr && search->Next(data);)
        all.push_back(data);
    return all;
}

std::map<std::string, FindData> ByName(const std::string& folder) {
    std::map<std::string, FindData> result;
    for (const FindData& data : FindAll(folder))
        result[data.name] = data;
    return result;
}

TEST(FindFiles, GivesTheDotsFirstAndEveryEntryOnce) {
    const TestDir dir;
    dir.MakeFile("Docs/a");
    dir.MakeFile("Docs/.hidden");
    dir.MakeFolder("Docs/sub");
    const std::vector<FindData> all = FindAll("E:\\docs\\");
    ASSERT_EQ(all.size(), 5U);
    EXPECT_EQ(all[0].name, ".");
    EXPECT_EQ(all[1].name, "..");
    EXPECT_EQ(all[0].attributes, kAttributeDirectory);
    const auto named = ByName("E:\\Docs");
    EXPECT_EQ(named.at("a").attributes, kAttributeArchive);
    EXPECT_EQ(named.at(".hidden").attributes, kAttributeArchive | kAttributeHidden);
    EXPECT_EQ(named.at("sub").attributes, kAttributeDirectory);
    EXPECT_EQ(named.at("sub").sizeLow, 0U);
}

TEST(FindFiles, SizesAndTimes) {
    const TestDir dir;
    dir.MakeFile("big");
    fs::resize_file(dir.Host("big"), 0x1'8000'0001);
    dir.MakeFile("dated", "x");
    // 2005-03-04 10:20:30 UTC
    fs::last_write_time(dir.Host("dated"), std::chrono::file_clock::from_sys(
                                               std::chrono::sys_seconds(std::chrono::seconds(1109931630))));
    const auto named = ByName("E:\\");
    EXPECT_EQ(named.at("big").sizeHigh, 1U);
    EXPECT_EQ(named.at("big").sizeLow, 0x8000'0001U);
    EXPECT_EQ(FileTimeToSystemTime(named.at("dated").lastWrite), (SystemTime{2005, 3, 4, 10, 20, 30}));
}

TEST(FindFiles, LinksAreWhatTheyPointAt) {
    const TestDir dir;
    dir.MakeFolder("folder");
    fs::create_symlink("folder", dir.Host("to-folder"));
    fs::create_symlink("nowhere", dir.Host("broken"));
    const auto named = ByName("E:\\");
    EXPECT_EQ(named.at("folder").attributes, kAttributeDirectory);
    EXPECT_EQ(named.at("to-folder").attributes, kAttributeDirectory | platform::kAttributeReparsePoint);
    EXPECT_EQ(named.at("broken").attributes & (kAttributeDirectory | platform::kAttributeReparsePoint),
              platform::kAttributeReparsePoint);
}

TEST(FindFiles, NamesThatCannotBeHeldShowAQuestionMark) {
    const TestDir dir;
    dir.MakeFile("back\\slash");
    dir.MakeFile("latin\xE4");
    dir.MakeFile("日ä");
    EXPECT_EQ(ByName("E:\\").count("back?slash"), 1U);
    EXPECT_EQ(ByName("E:\\").count("latin?"), 1U);
    EXPECT_EQ(ByName("E:\\").count("日ä"), 1U);
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    EXPECT_EQ(ByName("E:\\").count("?ä"), 1U);
}

TEST(FindFiles, FoldersThatCannotBeSearched) {
    const TestDir dir;
    dir.MakeFile("file");
    SystemError error;
    EXPECT_EQ(FindFiles::Start("E:\\none\\", error), nullptr);
    EXPECT_EQ(error.code, kErrorPathNotFound);
    EXPECT_EQ(FindFiles::Start("E:\\file", error), nullptr);
    EXPECT_EQ(error.code, kErrorFolderInvalid);
    EXPECT_EQ(FindFiles::Start("Q:\\", error), nullptr);
    EXPECT_EQ(error.code, kErrorPathNotFound);
}

TEST(FindFiles, FolderThatEmptiesMeanwhile) {
    const TestDir dir;
    for (int i = 0; i < 300; ++i)
        dir.MakeFile("f" + std::to_string(i));
    SystemError error;
    const auto search = FindFiles::Start("E:\\", error);
    FindData data;
    ASSERT_TRUE(search->Next(data));
    fs::remove_all(dir.Host());
    int left = 0;
    while (search->Next(data))
        ++left;
    EXPECT_LE(left, 301) << "it ends";
}

} // namespace
