#include "app/Startup.h"

#include "app/ApplicationState.h"
#include "app/IniFile.h"
#include "app/Messages.h"
#include "app/Settings.h"
#include "app/Texts.h"
#include "base/Numbers.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <string_view>

namespace app {

namespace {

// In English for everybody: no text library is loaded when they are shown.
constexpr std::string_view kNoLanguage =
    "Fail to determine language id. Setting.ini file may be missing or corrupted. Operation aborted.";
constexpr std::string_view kNoLanguageFile =
    "The language file required may be missing or corrupted. Operation aborted.";
constexpr std::string_view kNoCharset = "Fail to determine character set to be used. Setting.ini file may be "
                                        "missing or corrupted. Operation aborted.";

/// The start-up message that stops this start; empty when nothing does.
std::string_view FindObstacle() {
    const ApplicationState& state = Application();
    if (state.LanguageId.empty())
        return kNoLanguage;
    if (!platform::FileExists(platform::ProgramFolder() + "\\langfile" + state.LanguageId + ".dll"))
        return kNoLanguageFile;
    if (state.CharsetCode.empty())
        return kNoCharset;
    return {};
}

std::string ReadOwnerName() {
    const std::string folder = platform::ProgramFolder();
    return ReadIni("OwnerInfo", "Name", "User", folder.substr(0, 1) + ":\\Program\\Bin\\OwnerInfo.ini");
}

StartupOutcome StartUp() {
    if (platform::PreviousInstanceRuns()) {
        StartupShutdown();
        return StartupOutcome::kSecondCopy;
    }
    EnsureSettingsFile();
    ApplicationState& state = Application();
    state.LanguageId = ReadLanguageId();
    state.CharsetCode = ReadCharset();
    if (const std::string_view obstacle = FindObstacle(); !obstacle.empty()) {
        Messages().Show({.id = 0, .text = std::string(obstacle), .flags = kMessageError, .title = "Error"});
        return StartupOutcome::kStopped;
    }
    platform::SetLegacyCharset(base::WholeNumber(state.CharsetCode).value_or(0));
    LoadExtraTextLibrary();
    LoadLanguageLibrary();
    state.OwnerName = ReadOwnerName();
    return StartupOutcome::kRun;
}

} // namespace

StartupOutcome RunStartup() {
    try {
        return StartUp();
    } catch (...) {
        StartupShutdown();
        return StartupOutcome::kFailed;
    }
}

void StartupShutdown() {
    FreeExtraTextLibrary();
    FreeLanguageLibrary();
}

OsVersion OsVersionFrom(const platform::VersionRecord& record) {
    constexpr std::uint32_t kNtFamily = 2;
    return {.major = record.major,
            .minor = record.minor,
            .skinAllowed = record.platformId == kNtFamily && record.major == 5 && record.minor != 0};
}

OsVersion GetOsVersion() {
    return OsVersionFrom(platform::GetVersionRecord());
}

void PrepareSkin() {
    ApplicationState& state = Application();
    state.SkinAllowed = GetOsVersion().skinAllowed;
    if (!state.SkinAllowed)
        return;
    if (const std::string file = ReadSettings().skinFile; !file.empty())
        state.SkinFilePath = platform::ProgramFolder() + "\\" + file;
}

} // namespace app
