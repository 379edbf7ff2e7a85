#include "platform/posix/files/TemporaryFile.h"

#include "platform/posix/files/HostError.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr std::string_view kStart = ".pellarion-";
constexpr std::string_view kEnd = ".tmp";

/// A name that differs at every call in this process and from those of other processes. The time is part of
/// it, because after a power failure a process with the same number may have left a file behind.
std::string TemporaryName() {
    static std::atomic<unsigned> counter{0};
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return std::string(kStart) + std::to_string(::getpid()) + "-" + std::to_string(now.tv_sec) + "-" +
           std::to_string(now.tv_nsec) + "-" + std::to_string(counter++) + std::string(kEnd);
}

} // namespace

TemporaryFile::TemporaryFile(int folder, const std::string& prefix, int access, mode_t mode)
    : folder_(folder), name_(prefix + TemporaryName()),
      file_(::openat(folder, name_.c_str(), access | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode)) {
    if (!file_.IsOpen())
        name_.clear();
}

TemporaryFile::~TemporaryFile() {
    if (!name_.empty())
        ::unlinkat(folder_, name_.c_str(), 0);
}

base::SystemError TemporaryFile::Sync() const {
    return ::fsync(file_.Descriptor()) == 0 ? base::SystemError{} : ErrorFromErrno(errno, Access::kWrite);
}

base::SystemError TemporaryFile::TakeName(const std::string& hostName, unsigned flags) {
    if (::renameat2(folder_, name_.c_str(), folder_, hostName.c_str(), flags) != 0)
        return ErrorFromErrno(errno, Access::kWrite);
    name_.clear();
    return {};
}

bool IsTemporaryName(std::string_view hostName, std::string_view mark) {
    return hostName.starts_with(std::string(mark) + std::string(kStart)) && hostName.ends_with(kEnd);
}

void SyncFolder(const std::string& hostFolder) {
    const HostFile folder(::open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen())
        ::fsync(folder.Descriptor());
}

} // namespace platform
