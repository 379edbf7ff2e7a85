#pragma once

#include "platform/Process.h"

namespace app {

/// How the first half of start-up ended.
enum class StartupOutcome {
    kRun,        ///< go on with the splash window
    kSecondCopy, ///< another copy runs: end silently
    kStopped,    ///< one of the three start-up messages was shown
    kFailed,     ///< an unexpected error: end silently
};

/// Start-up up to the splash window: previous instance, settings file, language and character set with their
/// checks, both text libraries, the owner's name. Shows its messages through app::Messages().
StartupOutcome RunStartup();

/// The orderly stop: frees both text libraries. The caller ends the process.
void StartupShutdown();

/// The result of GetOsVersion: the version of the system, and whether skins are allowed (versions 5.1 and 5.2
/// only).
struct OsVersion {
    unsigned major = 0;
    unsigned minor = 0;
    bool skinAllowed = false;
};

OsVersion GetOsVersion();

/// The same for a given version record. Only versions 5.1 and 5.2 of the NT family (platform id 2) allow
/// skins; version 5.1 of another system's kernel does not.
OsVersion OsVersionFrom(const platform::VersionRecord& record);

/// Sets SkinAllowed and, when skins are allowed and one is named, SkinFilePath.
void PrepareSkin();

} // namespace app
