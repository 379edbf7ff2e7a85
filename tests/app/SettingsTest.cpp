#include "app/Settings.h"

#include "app/IniFile.h"
#include "support/HostFiles.h"
#include "support/TestDir.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {

using tests::TestDir;
namespace fs = std::filesystem;

/// The settings file beside this test program.
class SettingsFile {
  public:
    SettingsFile() { fs::remove(path_); }

    ~SettingsFile() { fs::remove(path_); }

    void Put(std::string_view content) const { std::ofstream(path_, std::ios::binary) << content; }

    std::string Content() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const fs::path& Path() const { return path_; }

  private:
    fs::path path_ = tests::ProgramDir() / "setting.ini";
    TestDir dir_;
    tests::ScopedVariable drives_{"PELLARION_DRIVES", std::string(::getenv("PELLARION_DRIVES")) +
                                                          ";P=fixed:" + tests::ProgramDir().string()};
};

TEST(IniFile, ReadsValuesInUtf8AndInTheCodePage) {
    const TestDir dir;
    const tests::ScopedVariable page("PELLARION_ANSI_CODEPAGE", "1252");
    const std::string file = dir.MakeFile("some.ini", "[A]\r\nOld=J\xF6rg\r\nNew=Jörg\r\n");
    EXPECT_EQ(app::ReadIni("A", "Old", "", file), "Jörg");
    EXPECT_EQ(app::ReadIni("A", "New", "", file), "Jörg");
    EXPECT_EQ(app::ReadIni("A", "None", "other", file), "other");
    EXPECT_EQ(app::ReadIni("A", "Old", "other", TestDir::Path("none.ini")), "other");
    app::WriteIni("a", "new", "日本", file);
    EXPECT_EQ(dir.Read("some.ini"), "[A]\r\nOld=J\xF6rg\r\nNew=日本\r\n");
    app::WriteIni("A", "K", "1", TestDir::Path("fresh.ini"));
    EXPECT_EQ(dir.Read("fresh.ini"), "[A]\r\nK=1\r\n");
}

TEST(IniFile, WhatCannotBeReadOrWrittenIsLeft) {
    const TestDir dir;
    const std::string file = dir.MakeFile("some.ini", "[Size]\r\nHeight=1\r\n");
    tests::Protect(dir.Host("some.ini"));
    for (const std::string& path : {file, dir.MakeFolder("folder.ini"), std::string("Q:\\no\\drive.ini")}) {
        EXPECT_TRUE(app::WriteIni("Size", "Height", "2", path));
        EXPECT_NE(app::ReadIni("Size", "Height", "3", path), "2");
    }
    EXPECT_EQ(app::ReadIni("Size", "Height", "3", file), "1");
    EXPECT_TRUE(fs::is_directory(dir.Host("folder.ini")));
}

// One test, since all of it uses the one file beside this program.
TEST(Settings, AreReadWholeAndSavedByTheLeastChange) {
    const SettingsFile file;
    EXPECT_EQ(app::ReadSettings(), app::Settings()) << "no file";
    EXPECT_EQ(app::ReadCharset(), "0");
    EXPECT_EQ(app::ReadLanguageId(), "");

    const std::string content = "; of J\xF6rg\n[setting]\nLANGUAGE=0407\nCharset=\n[Size]\nHeight = 500.5 \n"
                                "Width=wide\n[Grid]\nColWidth1=\"799,93\"\n[Skin]\nSkinFile=a b";
    file.Put(content);
    app::Settings settings = app::ReadSettings();
    app::Settings expected;
    expected.language = "0407";
    expected.charset = "";
    expected.height = 500;
    expected.width = std::nullopt;
    expected.skinFile = "a b";
    EXPECT_EQ(settings, expected) << "what is missing has the default of an existing file";
    EXPECT_EQ(app::ReadLanguageId(), "0407");
    EXPECT_EQ(app::ReadCharset(), "");

    // What is equal, or is the user's alone, is not written: neither are the file's own number forms changed.
    tests::NameWatch watch(file.Path());
    settings.language = "0409";
    settings.skinFile.clear();
    app::SaveSettings(settings);
    EXPECT_EQ(file.Content(), content);
    EXPECT_EQ(watch.Count(), 0);

    settings.width = 700;
    settings.columnWidths[3] = 90;
    settings.splitterLeft = 3501;
    app::SaveSettings(settings);
    EXPECT_EQ(file.Content(), "; of J\xF6rg\n[setting]\nLANGUAGE=0407\nCharset=\n[Size]\nHeight = 500.5 \n"
                              "Width=700\n[Grid]\nColWidth1=\"799,93\"\nColWidth3=90\n[Skin]\nSkinFile=a b\n"
                              "[VSplitter]\nLeft=3501\n");
    EXPECT_EQ(watch.Count(), watch.IsCounting() ? 1 : 0) << "three values, one replacement";
}

} // namespace
