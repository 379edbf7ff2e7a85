#include "platform/FindFiles.h"

#include "platform/Files.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>
#include <map>
#include <vector>

namespace {

using namespace platform;
using tests::TestDir;
namespace fs = std::filesystem;

std::map<std::string, FindData> ByName(const std::string& folder) {
    base::SystemError error{99};
    std::map<std::string, FindData> result;
    const auto search = FindFiles::Start(folder, error);
    EXPECT_FALSE(error) << folder;
    for (FindData data; search != nullptr && search->Next(data);)
        EXPECT_TRUE(result.emplace(data.name, data).second) << data.name << " came twice";
    return result;
}

TEST(FindFiles, GivesTheDotsFirst) {
    const TestDir dir;
    dir.MakeFile("Docs/!");
    base::SystemError error;
    const auto search = FindFiles::Start("E:\\docs\\", error);
    FindData data;
    for (const char* name : {".", "..", "!"}) {
        ASSERT_TRUE(search->Next(data));
        EXPECT_EQ(data.name, name);
        EXPECT_EQ(data.attributes, data.name == "!" ? kAttributeArchive : kAttributeDirectory);
    }
    EXPECT_FALSE(search->Next(data));
}

TEST(FindFiles, DescribesEveryKindOfEntry) {
    const TestDir dir;
    dir.MakeFile(".hidden");
    tests::Hide(dir.Host(".hidden"));
    dir.MakeFolder("folder");
    dir.MakeFile("big");
    fs::resize_file(dir.Host("big"), 0x1'8000'0001);
    dir.MakeFile("dated", "x");
    // 2005-03-04 10:20:30 UTC
    fs::last_write_time(dir.Host("dated"), std::chrono::file_clock::from_sys(
                                               std::chrono::sys_seconds(std::chrono::seconds(1109931630))));
    auto named = ByName("E:");
    EXPECT_EQ(named.size(), 6U);
    EXPECT_EQ(named.at(".hidden").attributes, kAttributeArchive | kAttributeHidden);
    EXPECT_EQ(named.at("folder").attributes, kAttributeDirectory);
    EXPECT_EQ(named.at("folder").sizeLow, 0U);
    EXPECT_EQ(named.at("big").sizeHigh, 1U);
    EXPECT_EQ(named.at("big").sizeLow, 0x8000'0001U);
    EXPECT_EQ(FileTimeToSystemTime(named.at("dated").lastWrite), (SystemTime{2005, 3, 4, 10, 20, 30}));
    if (!tests::MakeLink("folder", dir.Host("to-folder")) || !tests::MakeLink("nowhere", dir.Host("broken")))
        GTEST_SKIP() << "no links here";
    // A link is what it points at.
    named = ByName("E:");
    EXPECT_EQ(named.at("to-folder").attributes, kAttributeDirectory | kAttributeReparsePoint);
    EXPECT_EQ(named.at("broken").attributes & (kAttributeDirectory | kAttributeReparsePoint),
              kAttributeReparsePoint);
}

TEST(FindFiles, NamesThatCannotBeHeldShowAQuestionMark) {
    const TestDir dir;
    dir.MakeFile("日ä");
    const tests::ScopedVariable whole("PELLARION_ANSI_CODEPAGE", "65001");
    EXPECT_EQ(ByName("E:\\").count("日ä"), 1U);
    if constexpr (tests::kNamesAreBytes) {
        for (const char* name : {"back\\slash", "latin\xE4"})
            dir.MakeFile(name);
        for (const char* name : {"back?slash", "latin?"})
            EXPECT_EQ(ByName("E:\\").count(name), 1U) << name;
    }
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    EXPECT_EQ(ByName("E:\\").count("?ä"), 1U);
}

} // namespace
