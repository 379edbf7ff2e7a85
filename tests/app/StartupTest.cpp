#include "app/Startup.h"

#include "app/ProbeRun.h"
#include "support/SmallDisk.h"

#include <chrono>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace {

namespace fs = std::filesystem;
using std::string_literals::operator""s;
using tests::ProbeResult;
using tests::ProgramFolder;

constexpr std::string_view kEnglish = "[Setting]\r\nLanguage=0409\r\nCharset=0\r\n";

const std::string kNoLanguage = "16|Error|Fail to determine language id. Setting.ini file may be missing or "
                                "corrupted. Operation aborted.";
const std::string kNoLanguageFile =
    "16|Error|The language file required may be missing or corrupted. Operation aborted.";
const std::string kNoCharset = "16|Error|Fail to determine character set to be used. Setting.ini file may be "
                               "missing or corrupted. Operation aborted.";

std::vector<std::string> Only(const std::string& message) {
    return {message};
}

TEST(Startup, FirstStartWritesTheDefaultSettingsAndRuns) {
    ProgramFolder folder;
    const ProbeResult result = folder.Start("302 x103");
    EXPECT_EQ(result["outcome"], "run");
    EXPECT_EQ(result.messages, std::vector<std::string>());
    EXPECT_EQ(result["language"], "0409");
    EXPECT_EQ(result["charset"], "0");
    EXPECT_EQ(result["owner"], "User");
    EXPECT_EQ(result["302"], "Pellarion");
    EXPECT_EQ(result["x103"], "&Help");
    EXPECT_EQ(folder.Dir().Read("Tools/Pellarion/setting.ini"),
              "[Setting]\r\nLanguage=0409\r\nCharset=0\r\n\r\n[Size]\r\nHeight=12315\r\nWidth=12315\r\n\r\n"
              "[Grid]\r\nColWidth0=1800.00\r\nColWidth1=799.93\r\nColWidth2=1440.00\r\nColWidth3=2000.12\r\n"
              "\r\n[VSplitter]\r\nLeft=4570\r\n\r\n[Skin]\r\nSkinFile=Skins\\default.skf\r\n");

    EXPECT_EQ(result["copies"], "oxlic_0409.dll ox_langfile0409.dll");
    EXPECT_EQ(result["copies after"], "");
    EXPECT_TRUE(fs::is_directory(folder.TempFolder()));
}

TEST(Startup, StopsWithOneOfItsThreeMessages) {
    struct Case {
        std::string settings;
        std::string message;
    };

    const Case cases[] = {
        {"", kNoLanguage},
        {"[Setting]\r\nLanguage=\r\nCharset=0\r\n", kNoLanguage},
        {"[Other]\r\nLanguage=0409\r\n", kNoLanguage},
        {"\0\xff\xfe\x80 garbage [Setting Language"s, kNoLanguage},
        {"[Setting]\r\nLanguage=0411\r\nCharset=0\r\n", kNoLanguageFile},
        {"[Setting]\r\nLanguage=0411\r\nCharset=\r\n", kNoLanguageFile},
        {"[Setting]\r\nLanguage=0409\r\nCharset=\r\n", kNoCharset},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.settings);
        ProgramFolder folder(one.settings);
        const ProbeResult result = folder.Start();
        EXPECT_EQ(result["outcome"], "stopped");
        EXPECT_EQ(result["ended"], "well");
        EXPECT_EQ(result.messages, Only(one.message));
        EXPECT_EQ(folder.Dir().Read("Tools/Pellarion/setting.ini"), one.settings);
        EXPECT_FALSE(fs::exists(folder.TempFolder())) << "a library was touched before the checks";
    }
}

// What stands in the way of the settings file must end in the first message, not in a crash or a hang.
TEST(Startup, StopsWhenTheSettingsFileCannotBe) {
    const std::function<bool(const fs::path&)> obstacles[] = {
        [](const fs::path& path) { return fs::create_directory(path); },
        [](const fs::path& path) { return tests::MakeLink("setting.ini", path); },
        [](const fs::path& path) { return tests::MakeLink("/nowhere/setting.ini", path); },
    };
    for (const auto& putInTheWay : obstacles) {
        ProgramFolder folder;
        if (!putInTheWay(folder.Host("setting.ini"))) {
            EXPECT_TRUE(tests::kIsWindows) << "links can be made everywhere else";
            continue;
        }
        const ProbeResult result = folder.Start();
        EXPECT_EQ(result["outcome"], "stopped");
        EXPECT_EQ(result["ended"], "well");
        EXPECT_EQ(result.messages, Only(kNoLanguage));
    }
}

TEST(Startup, StopsOnAWriteProtectedDriveWithoutSettings) {
    ProgramFolder folder;
    const tests::SmallDisk disk(folder.Host(), 256U << 20); // with room for the program file
    if (!disk.IsMounted())
        GTEST_SKIP() << "mounting is not permitted here";
    folder.Put(STARTUP_PROBE, ProgramFolder::kProgram);
    ASSERT_TRUE(disk.Protect());
    const ProbeResult result = folder.Start();
    EXPECT_EQ(result["ended"], "well");
    EXPECT_EQ(result.messages, Only(kNoLanguage));
}

TEST(Startup, LanguageIsChosenInTheSettings) {
    ProgramFolder folder("[setting]\nLANGUAGE=0407\n"); // no Charset: 0
    // The drive's file system keeps letter case but does not care.
    fs::rename(folder.Host("langfile0407.dll"), folder.Host("LangFile0407.DLL"));
    const ProbeResult result = folder.Start("101 x103");
    EXPECT_EQ(result["outcome"], "run");
    EXPECT_EQ(result["charset"], "0");
    EXPECT_EQ(result["101"], "&Löschen");
    EXPECT_EQ(result["x103"], "&Hilfe");
    EXPECT_EQ(result["copies"], "oxlic_0407.dll ox_langfile0407.dll");
}

TEST(Startup, GoesOnWithoutALibraryItCannotLoad) {
    std::ifstream file(std::string(PROGRAM_DIR) + "/langfile0409.dll", std::ios::binary);
    const std::string whole(std::istreambuf_iterator<char>(file), {});
    ASSERT_GT(whole.size(), 4096U);
    for (const std::string& damaged : {std::string(), whole.substr(0, 300), std::string(9000, 'x')}) {
        SCOPED_TRACE(damaged.size());
        ProgramFolder folder(kEnglish);
        folder.Dir().MakeFile("Tools/Pellarion/langfile0409.dll", damaged);
        const ProbeResult result = folder.Start("302 500 x103");
        EXPECT_EQ(result["outcome"], "run");
        EXPECT_EQ(result["ended"], "well");
        EXPECT_EQ(result.messages, Only("16|Pellarion|Error: The file is not a valid library."));
        EXPECT_EQ(result["302"], "");
        EXPECT_EQ(result["x103"], "&Help");
        EXPECT_EQ(result["copies after"], "");
    }
    ProgramFolder folder(kEnglish);
    fs::remove(folder.Host("lic0409.dll"));
    const ProbeResult result = folder.Start("302 x103");
    EXPECT_EQ(result["outcome"], "run");
    EXPECT_EQ(result.messages, Only("16|Pellarion|Error: The system cannot find the file specified."));
    EXPECT_EQ(result["x103"], "");
    EXPECT_EQ(result["302"], "Pellarion");
}

// A copy that took the protection along could be neither deleted at the end nor replaced at the next start.
TEST(Startup, CopiesAreFreshAndDoNotStay) {
    ProgramFolder folder(kEnglish);
    fs::create_directories(folder.TempFolder());
    for (const char* name : {"ox_langfile0409.dll", "oxlic_0409.dll"})
        std::ofstream(folder.TempFolder() / name) << "left by a run that was cut off";
    for (const char* name : {"langfile0409.dll", "lic0409.dll"})
        tests::Protect(folder.Host(name));
    for (int start = 1; start <= 2; ++start) {
        const ProbeResult result = folder.Start("302 x103");
        EXPECT_EQ(result.messages, std::vector<std::string>());
        EXPECT_EQ(result["302"], "Pellarion");
        EXPECT_EQ(result["x103"], "&Help");
        EXPECT_EQ(result["copies"], "oxlic_0409.dll ox_langfile0409.dll");
        EXPECT_EQ(result["copies after"], "");
    }
}

TEST(Startup, GoesOnWithoutTextsWhenThereIsNoWorkingFolder) {
    ProgramFolder folder(kEnglish);
    std::ofstream(folder.Dir().HostC() / "Pellarion") << "a file in the folder's place";
    const ProbeResult result = folder.Start("302");
    EXPECT_EQ(result["outcome"], "run");
    EXPECT_EQ(result.messages.size(), 2U) << "one for each library";
    EXPECT_EQ(result["302"], "");
}

TEST(Startup, ReadsTheOwnersNameFromTheSuite) {
    ProgramFolder folder("[Setting]\r\nLanguage=0409\r\nCharset=134\r\n");
    folder.Dir().MakeFile("Program/Bin/OwnerInfo.ini", "[OwnerInfo]\r\nName=Ann Example\r\n");
    EXPECT_EQ(folder.Start("500")["500"], "Welcome, Ann Example. Pellarion will be ready in a moment ...");

    // Written on a system with the legacy page of the character set.
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "65001");
    folder.Dir().MakeFile("Program/Bin/OwnerInfo.ini", "[OwnerInfo]\r\nName=\xC0\xEE\xC3\xF7\r\n");
    EXPECT_EQ(folder.Start()["owner"], "李明");
}

TEST(Startup, SecondCopyEndsSilentlyAndTouchesNothing) {
    ProgramFolder folder(kEnglish);
    const fs::path told = folder.Dir().HostC() / "told";
    FILE* first = tests::OpenPipe((folder.Command("hold") + " > " + told.string()).c_str(), "w");
    ASSERT_NE(first, nullptr);
    std::string output;
    for (int tries = 0; tries < 1000 && output.find("outcome=") == std::string::npos; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10)); // polling
        std::ifstream file(told);
        output.assign(std::istreambuf_iterator<char>(file), {});
    }
    EXPECT_EQ(ProgramFolder::Parse(output)["outcome"], "run");

    fs::remove(folder.Host("setting.ini"));
    const ProbeResult second = folder.Start();
    EXPECT_EQ(second["outcome"], "second copy");
    EXPECT_EQ(second.messages, std::vector<std::string>());
    EXPECT_FALSE(fs::exists(folder.Host("setting.ini"))) << "the second copy went on to the settings";
    EXPECT_TRUE(fs::exists(folder.TempFolder() / "ox_langfile0409.dll"));
    EXPECT_TRUE(fs::exists(folder.TempFolder() / "oxlic_0409.dll"));

    tests::ClosePipe(first);
    EXPECT_EQ(folder.Start()["outcome"], "run") << "the place of the first copy is free again";
}

TEST(Startup, EndsSilentlyAfterAnUnexpectedError) {
    ProgramFolder folder(kEnglish);
    // The second library is loaded when the damaged first one is reported, which fails.
    fs::resize_file(folder.Host("langfile0409.dll"), 100);
    const ProbeResult result = folder.Start("throw x103");
    EXPECT_EQ(result["outcome"], "failed");
    EXPECT_EQ(result["ended"], "well");
    EXPECT_EQ(result["copies"], "") << "both libraries are freed and their copies gone";
    EXPECT_EQ(result["x103"], "");
}

TEST(Startup, SkinsBelongToTwoVersionsOfOneFamily) {
    const auto allowed = [](std::uint32_t major, std::uint32_t minor, std::uint32_t family) {
        return app::OsVersionFrom({.major = major, .minor = minor, .platformId = family}).skinAllowed;
    };
    EXPECT_TRUE(allowed(5, 1, 2));
    EXPECT_TRUE(allowed(5, 2, 2));
    EXPECT_FALSE(allowed(5, 0, 2));
    EXPECT_FALSE(allowed(6, 1, 2));
    EXPECT_FALSE(allowed(5, 1, 0)) << "a kernel of another system";
}

} // namespace
