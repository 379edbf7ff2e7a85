#include "support/HostFiles.h"

#ifdef _WIN32
#include <string>
#include <string_view>
#include <windows.h>
#else
#include <sys/stat.h>
#include <time.h>
#endif

namespace tests {

namespace fs = std::filesystem;

void Protect(const fs::path& file) {
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
}

#ifdef _WIN32

bool MakeLink(const fs::path& target, const fs::path& at) {
    const bool isFolder = fs::is_directory(at.parent_path() / target);
    ::CreateSymbolicLinkW(at.c_str(), target.c_str(),
                          (isFolder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0) |
                              SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE);
    return ::GetFileAttributesW(at.c_str()) != INVALID_FILE_ATTRIBUTES; // Wine says that it did, and did not
}

bool MakePipe(const fs::path&) {
    return false;
}

void Hide(const fs::path& file) {
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN);
}

fs::path ProgramDir() {
    std::wstring file(MAX_PATH, L'\0');
    file.resize(::GetModuleFileNameW(nullptr, file.data(), MAX_PATH));
    return fs::path(file).parent_path();
}

void TimeZone::ReadZone() {}

bool TimeZone::IsSet() const {
    DYNAMIC_TIME_ZONE_INFORMATION zone{};
    ::GetDynamicTimeZoneInformation(&zone);
    return std::wstring_view(zone.TimeZoneKeyName).ends_with(L"Europe Standard Time") && zone.Bias == -60;
}

#else

bool MakeLink(const fs::path& target, const fs::path& at) {
    fs::create_symlink(target, at);
    return true;
}

bool MakePipe(const fs::path& at) {
    return ::mkfifo(at.c_str(), 0600) == 0;
}

void Hide(const fs::path&) {}

fs::path ProgramDir() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

void TimeZone::ReadZone() {
    ::tzset();
}

bool TimeZone::IsSet() const {
    return true;
}

#endif

} // namespace tests
