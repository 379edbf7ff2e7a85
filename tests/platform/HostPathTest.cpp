#include "platform/HostPath.h"

#include "platform/Files.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using tests::ScopedVariable;
using tests::TestDir;

TEST(HostPath, ExactNameFirstThenAnyCase) {
    const TestDir dir;
    dir.MakeFile("Docs/Äpfel.txt");
    dir.MakeFile("Docs/same");
    dir.MakeFile("Docs/SAME");
    EXPECT_EQ(HostPathOf("E:\\Docs\\Äpfel.txt"), dir.Host("Docs/Äpfel.txt"));
    EXPECT_EQ(HostPathOf("e:\\DOCS\\äPFEL.TXT"), dir.Host("Docs/Äpfel.txt"));
    EXPECT_EQ(HostPathOf("E:\\docs\\same"), dir.Host("Docs/same"));
    EXPECT_EQ(HostPathOf("E:\\docs\\SAME"), dir.Host("Docs/SAME"));
    EXPECT_EQ(HostPathOf("E:\\DOCS\\New\\File"), dir.Host("Docs/New/File"))
        << "what is missing is kept as it is";
}

// What is remembered of folders must never outlive what is in them.

TEST(HostPath, NamesThatComeAndGoAreSeen) {
    const TestDir dir;
    for (int i = 0; i < 50; ++i) {
        EXPECT_FALSE(FileExists("E:\\A.TXT"));
        dir.MakeFile("a.txt");
        EXPECT_TRUE(FileExists("E:\\A.TXT"));
        std::filesystem::rename(dir.Host("a.txt"), dir.Host("b.txt"));
        EXPECT_FALSE(FileExists("E:\\A.TXT"));
        EXPECT_TRUE(FileExists("E:\\B.TXT"));
        std::filesystem::remove(dir.Host("b.txt"));
    }
    dir.MakeFile("name");
    dir.MakeFile("NAME");
    EXPECT_TRUE(FileExists("E:\\Name"));
    std::filesystem::remove(dir.Host("NAME"));
    EXPECT_EQ(HostPathOf("E:\\Name"), dir.Host("name")) << "one of two cases has gone";
}

TEST(HostPath, FolderThatIsAnotherNow) {
    const TestDir dir;
    dir.MakeFile("a/one");
    dir.MakeFile("b/two");
    EXPECT_TRUE(FileExists("E:\\a\\ONE"));
    std::filesystem::rename(dir.Host("a"), dir.Host("c"));
    std::filesystem::rename(dir.Host("b"), dir.Host("a"));
    EXPECT_FALSE(FileExists("E:\\a\\ONE"));
    EXPECT_TRUE(FileExists("E:\\a\\TWO"));
    EXPECT_TRUE(FileExists("E:\\C\\ONE"));
    std::filesystem::remove_all(dir.Host("a"));
    dir.MakeFile("a/three");
    EXPECT_TRUE(FileExists("E:\\a\\THREE"));
    EXPECT_FALSE(FileExists("E:\\a\\TWO"));
}

TEST(HostPath, MoreFoldersThanAreRemembered) {
    const TestDir dir;
    for (const std::string round : {"0", "1"}) {
        for (int i = 0; i < 20; ++i) {
            const std::string folder = "f" + std::to_string(i) + "/";
            dir.MakeFile(folder + "file" + round);
            EXPECT_TRUE(FileExists(TestDir::Path(folder + "FILE" + round)));
            EXPECT_FALSE(FileExists(TestDir::Path(folder + "FILE2")));
        }
    }
}

TEST(HostPath, PathsStayInsideTheirDrive) {
    const TestDir dir;
    const std::string root = dir.Host().string();
    EXPECT_EQ(HostPathOf("E:"), root);
    EXPECT_EQ(HostPathOf("E:\\"), root);
    EXPECT_EQ(HostPathOf("E:\\..\\..\\etc"), root + "/etc");
    EXPECT_EQ(HostPathOf("E:/a/./b/../c//"), root + "/a/c");
    EXPECT_EQ(HostPathOf("E:\\a/..\\..\\x"), root + "/x");
    using namespace std::string_view_literals;
    for (const std::string_view path :
         {"Q:\\x"sv, ""sv, "\\\\server\\share"sv, "/etc/passwd"sv, "1:\\x"sv, "E:\\a\0b"sv})
        EXPECT_EQ(HostPathOf(path), "") << path;
}

TEST(HostPath, HostNamesBecomePaths) {
    const TestDir dir;
    EXPECT_EQ(PathFromHost(dir.Host().string()), "E:\\");
    EXPECT_EQ(PathFromHost(dir.Host("a/b c").string() + "/"), "E:\\a\\b c");
    EXPECT_EQ(PathFromHost(dir.HostC().string() + "/x/../y"), "C:\\y");
    EXPECT_EQ(PathFromHost(dir.Host("a\\b").string()), "E:\\a?b");
    EXPECT_EQ(PathFromHost(dir.Host("a\xE4z").string()), "E:\\a?z");
    EXPECT_EQ(PathFromHost(dir.Host().string() + "x"), "") << "a neighbour whose name begins alike";
    EXPECT_EQ(PathFromHost("/nowhere/else"), "") << "outside the drives";
}

TEST(HostPath, RootsInsideRootsAndBehindLinks) {
    const TestDir dir;
    dir.MakeFolder("stick/Docs");
    std::filesystem::create_symlink("stick", dir.Host("link"));
    {
        const ScopedVariable drives("PELLARION_DRIVES",
                                    "C=fixed:/;G=removable:" + dir.Host("stick").string() + "/");
        EXPECT_EQ(PathFromHost(dir.Host("stick/Docs").string()), "G:\\Docs") << "the longest root wins";
        EXPECT_EQ(PathFromHost("/usr"), "C:\\usr");
        EXPECT_EQ(HostPathOf("C:\\"), "/");
        EXPECT_EQ(HostPathOf("C:\\USR"), "/usr");
    }
    const ScopedVariable drives("PELLARION_DRIVES", "G=removable:" + dir.Host("link").string());
    EXPECT_EQ(PathFromHost(dir.Host("stick/Docs").string()), "G:\\Docs");
}

TEST(HostPath, WorkingFolderIsTheUsersCache) {
    const TestDir dir;
    EXPECT_EQ(HostPathOf("C:\\Pellarion\\temp"), dir.HostC() / "Pellarion/temp") << "in a set table";
    const ScopedVariable drives("PELLARION_DRIVES", "");
    const ScopedVariable cache("XDG_CACHE_HOME", dir.Host("not/there/yet").string());
    const std::string working = dir.Host("not/there/yet/pellarion").string();
    EXPECT_EQ(HostPathOf("c:\\pellarion\\temp\\x"), working + "/temp/x");
    EXPECT_EQ(HostPathOf("C:\\Pellarion2"), "/Pellarion2");
    EXPECT_EQ(PathFromHost(working + "/temp"), "C:\\Pellarion\\temp");
    EXPECT_FALSE(FolderExists("C:\\Pellarion\\"));
    EXPECT_FALSE(CreateFolder("C:\\Pellarion\\"));
    EXPECT_FALSE(CreateFolder("C:\\Pellarion\\temp\\"));
    EXPECT_TRUE(FolderExists("C:\\PELLARION\\Temp"));
    EXPECT_TRUE(std::filesystem::is_directory(working + "/temp"));
}

TEST(HostPath, CurrentFolderIsAlwaysAFolderOfTheProgram) {
    const TestDir dir;
    const std::filesystem::path before = std::filesystem::current_path();
    EXPECT_NE(CurrentFolder().find('\\'), std::string::npos) << "even outside all drives";
    dir.MakeFolder("here");
    std::filesystem::current_path(dir.Host("here"));
    EXPECT_EQ(CurrentFolder(), "E:\\here");
    EXPECT_EQ(PathFromHost("x/y"), "E:\\here\\x\\y");
    std::filesystem::current_path(before);
}

} // namespace
