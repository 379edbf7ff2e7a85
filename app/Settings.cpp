#include "app/Settings.h"

#include "app/IniFile.h"
#include "base/Numbers.h"
#include "base/ProfileText.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Process.h"

#include <exception>
#include <string_view>

namespace app {

namespace {

constexpr std::string_view kDefaultSettings = "[Setting]\r\n"
                                              "Language=0409\r\n"
                                              "Charset=0\r\n"
                                              "\r\n"
                                              "[Size]\r\n"
                                              "Height=12315\r\n"
                                              "Width=12315\r\n"
                                              "\r\n"
                                              "[Grid]\r\n"
                                              "ColWidth0=1800.00\r\n"
                                              "ColWidth1=799.93\r\n"
                                              "ColWidth2=1440.00\r\n"
                                              "ColWidth3=2000.12\r\n"
                                              "\r\n"
                                              "[VSplitter]\r\n"
                                              "Left=4570\r\n"
                                              "\r\n"
                                              "[Skin]\r\n"
                                              "SkinFile=Skins\\default.skf\r\n";

/// Calls `visit` with the section and the key of each length, and with a function from Settings to its
/// member.
template <typename Visitor>
void ForEachLength(Visitor visit) {
    visit(
        "Size", "Height", [](auto& settings) -> auto& { return settings.height; });
    visit(
        "Size", "Width", [](auto& settings) -> auto& { return settings.width; });
    for (std::size_t column = 0; column < Settings::kColumns; ++column)
        visit(
            "Grid", "ColWidth" + std::to_string(column), [column](auto& settings) -> auto& {
                return settings.columnWidths[column];
            });
    visit(
        "VSplitter", "Left", [](auto& settings) -> auto& { return settings.splitterLeft; });
}

Settings SettingsIn(std::string_view content) {
    Settings settings;
    const auto readText = [content](std::string_view section, std::string_view key, std::string& text) {
        if (const auto value = base::FindProfileValue(content, section, key))
            text = platform::FileTextToUtf8(*value);
    };
    readText("Setting", "Language", settings.language);
    readText("Setting", "Charset", settings.charset);
    readText("Skin", "SkinFile", settings.skinFile);
    ForEachLength([&](std::string_view section, std::string_view key, auto member) {
        if (const auto value = base::FindProfileValue(content, section, key))
            member(settings) = base::WholeNumber(*value);
    });
    return settings;
}

std::string ReadText(std::string Settings::*member) {
    try {
        return ReadSettings().*member;
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

std::string SettingsFilePath() {
    return platform::ProgramFolder() + "\\setting.ini";
}

bool EnsureSettingsFile() {
    try {
        const std::string path = SettingsFilePath();
        if (platform::FileExists(path))
            return true;
        static_cast<void>(platform::CreateNewFile(path, kDefaultSettings));
        return platform::FileExists(path);
    } catch (const std::exception&) {
        return false;
    }
}

Settings ReadSettings() {
    return SettingsIn(ReadIniContent(SettingsFilePath()).value_or(""));
}

void SaveSettings(const Settings& settings) {
    const std::string path = SettingsFilePath();
    const std::optional<std::string> before = ReadIniContent(path);
    if (!before)
        return;
    const Settings saved = SettingsIn(*before);
    std::string after = *before;
    ForEachLength([&](std::string_view section, std::string_view key, auto member) {
        const std::optional<int>& length = member(settings);
        if (length && length != member(saved))
            after = base::SetProfileValue(after, section, key, base::SingleText(static_cast<float>(*length)));
    });
    ReplaceIniContent(path, *before, after);
}

std::string ReadLanguageId() {
    return ReadText(&Settings::language);
}

std::string ReadCharset() {
    return ReadText(&Settings::charset);
}

} // namespace app
