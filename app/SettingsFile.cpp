#include "app/SettingsFile.h"

#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/ProfileStrings.h"

#include <exception>
#include <string_view>
#include <vector>

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

std::string ReadSetting(const std::string& key, const std::string& fallback) {
    try {
        return ReadIni("Setting", key, fallback, SettingsFilePath());
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

std::string ReadIni(const std::string& section, const std::string& key, const std::string& fallback,
                    const std::string& file) {
    constexpr std::size_t kFirstSize = 256;
    for (std::vector<char> buffer(kFirstSize);; buffer.assign(buffer.size() * 2, '\0')) {
        const std::size_t length = platform::GetProfileString(section, key, fallback, buffer, file);
        // One or two below the size: the value may have been cut.
        if (length + 2 < buffer.size())
            return {buffer.data(), length};
    }
}

bool WriteIni(const std::string& section, const std::string& key, const std::string& value,
              const std::string& file) {
    static_cast<void>(platform::WriteProfileString(section, key, value, file));
    return true;
}

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

std::string ReadLanguageId() {
    return ReadSetting("Language", "");
}

std::string ReadCharset() {
    return ReadSetting("Charset", "0");
}

} // namespace app
