// What the services do on Windows itself; the rules that they share with the other system are in the other
// files.

#include "platform/Drives.h"
#include "platform/FileOperationsFixture.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "platform/HostPath.h"
#include "platform/Process.h"
#include "platform/SpecialFolders.h"

namespace {

using namespace platform;
using tests::ScopedVariable;
using tests::TestDir;

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
    base::SystemError error;
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
    tests::Watcher watcher;
    EXPECT_EQ(DeleteTree("E:\\" + name, watcher), base::Outcome::kDone);
    EXPECT_EQ(dir.Count(), 0U);
}

} // namespace
