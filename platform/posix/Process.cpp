#include "platform/Process.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/HostNames.h"
#include "platform/posix/paths/UserFolders.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace platform {
namespace {

HostFile OpenLockFile() {
    constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW;
    const std::string runtime = UserRuntimeFolder();
    if (!runtime.empty()) {
        HostFile file(::open((runtime + "/pellarion.lock").c_str(), kFlags, 0600));
        if (file.IsOpen())
            return file;
    }
    const std::string folder = UserCacheFolder() + "/pellarion";
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return HostFile(::open((folder + "/running.lock").c_str(), kFlags, 0600));
}

bool ClaimPlace() {
    // Held until the process ends; the host gives it up then, whatever the end was.
    static const HostFile file = OpenLockFile();
    return !file.IsOpen() || ::flock(file.Descriptor(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace

bool PreviousInstanceRuns() {
    static const bool isFirst = ClaimPlace();
    return !isFirst;
}

VersionRecord GetVersionRecord() {
    VersionRecord record;
    utsname name{};
    if (::uname(&name) != 0 || std::sscanf(name.release, "%u.%u", &record.major, &record.minor) != 2)
        record = {};
    return record;
}

std::string ProgramFolder() {
    std::array<char, 4096> target;
    const ssize_t length = ::readlink("/proc/self/exe", target.data(), target.size());
    if (length <= 0 || static_cast<std::size_t>(length) == target.size())
        return "";
    std::string folder = PathFromHost(ParentOf({target.data(), static_cast<std::size_t>(length)}));
    if (folder.ends_with('\\'))
        folder.pop_back();
    return folder;
}

} // namespace platform
