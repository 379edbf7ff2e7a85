#include "support/HostFiles.h"

#ifdef _WIN32
#include <string>
#include <string_view>
#include <windows.h>
#else
#include <array>
#include <cerrno>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>
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

NameWatch::NameWatch(const fs::path&) {}

NameWatch::~NameWatch() = default;

int NameWatch::Count() {
    return 0;
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

NameWatch::NameWatch(const fs::path& file)
    : name_(file.filename()), descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (::inotify_add_watch(descriptor_, file.parent_path().c_str(), IN_MOVED_TO | IN_CREATE) < 0)
        throw fs::filesystem_error("no watch", file, std::error_code(errno, std::generic_category()));
}

NameWatch::~NameWatch() {
    ::close(descriptor_);
}

int NameWatch::Count() {
    int count = 0;
    alignas(inotify_event) std::array<char, 64 * 1024> buffer;
    ssize_t length = 0;
    while ((length = ::read(descriptor_, buffer.data(), buffer.size())) > 0) {
        for (const char* place = buffer.data(); place < buffer.data() + length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(place);
            count += event->name == name_ ? 1 : 0;
            place += sizeof(inotify_event) + event->len;
        }
    }
    return count;
}

void TimeZone::ReadZone() {
    ::tzset();
}

bool TimeZone::IsSet() const {
    return true;
}

#endif

} // namespace tests
