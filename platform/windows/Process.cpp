#include "platform/Process.h"

#include "platform/HostPath.h"
#include "platform/windows/Wide.h"
#include "platform/windows/Windows.h"

#include <array>

namespace platform {
namespace {

bool ClaimPlace() {
    // Held until the process ends; the system gives it up then, whatever the end was. No static: setting one
    // up would lose the error that tells of the other copy.
    const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, L"Local\\Pellarion.Running");
    return mutex == nullptr || ::GetLastError() != ERROR_ALREADY_EXISTS;
}

} // namespace

bool PreviousInstanceRuns() {
    static const bool isFirst = ClaimPlace();
    return !isFirst;
}

bool IsNTAdmin() {
    std::array<BYTE, SECURITY_MAX_SID_SIZE> administrators;
    DWORD size = administrators.size();
    BOOL isMember = FALSE;
    return ::CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators.data(), &size) != 0 &&
           ::CheckTokenMembership(nullptr, administrators.data(), &isMember) != 0 && isMember != 0;
}

VersionRecord GetVersionRecord() {
    // The documented calls return the version that the manifest names; this one returns the version that
    // runs.
    using Query = LONG(WINAPI*)(OSVERSIONINFOW*);
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    const HMODULE kernel = ::GetModuleHandleW(L"ntdll.dll");
    const FARPROC address = kernel == nullptr ? nullptr : ::GetProcAddress(kernel, "RtlGetVersion");
    if (address == nullptr || reinterpret_cast<Query>(reinterpret_cast<void*>(address))(&version) != 0)
        return {};
    return {version.dwMajorVersion, version.dwMinorVersion, version.dwPlatformId};
}

std::string ProgramFolder() {
    std::wstring file(32768, L'\0');
    const DWORD length = ::GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    if (length == 0 || length == file.size())
        return "";
    file.resize(length);
    std::string folder = PathFromHost(Utf8OfWide(file.substr(0, file.find_last_of(L'\\') + 1)));
    if (folder.ends_with('\\'))
        folder.pop_back();
    return folder;
}

} // namespace platform
