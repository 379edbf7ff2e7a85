#include "Replacement.h"

#include "HostAttributes.h"
#include "HostError.h"
#include "HostNames.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

/// Where the link at `hostPath` leads; the path itself when it is no link or leads nowhere.
std::string LinkTarget(const std::string& hostPath) {
    char* resolved = ::realpath(hostPath.c_str(), nullptr);
    const std::string target = resolved == nullptr ? hostPath : resolved;
    std::free(resolved);
    return target;
}

} // namespace

std::string TemporaryName() {
    static std::atomic<unsigned> counter{0};
    // The moment tells this name from one that a process of the same number left behind when the power
    // failed.
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return ".pellarion-" + std::to_string(::getpid()) + "-" + std::to_string(now.tv_sec) + "-" +
           std::to_string(now.tv_nsec) + "-" + std::to_string(counter++) + ".tmp";
}

void SyncFolder(const std::string& hostFolder) {
    const HostFile folder(::open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen())
        ::fsync(folder.Descriptor());
}

Replacement::Replacement(std::string hostPath) : target_(LinkTarget(std::move(hostPath))) {
    struct stat status {};

    const bool exists = ::lstat(target_.c_str(), &status) == 0;
    if (exists && IsProtected(status)) {
        error_ = {kErrorAccessDenied};
        return;
    }
    const std::string temporary = ParentOf(target_) + "/" + TemporaryName();
    file_ = HostFile(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file_.IsOpen()) {
        error_ = ErrorForPath(errno, temporary, Access::kWrite);
        return;
    }
    temporary_ = temporary;
    // Media without modes or owners refuse both; the content matters more.
    if (exists && S_ISREG(status.st_mode)) {
        if (::fchown(file_.Descriptor(), status.st_uid, status.st_gid) != 0)
            errno = 0;
        if (::fchmod(file_.Descriptor(), status.st_mode & 07777) != 0)
            errno = 0;
    }
}

Replacement::~Replacement() {
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

SystemError Replacement::Commit() {
    if (::fsync(file_.Descriptor()) != 0)
        return ErrorFromErrno(errno, Access::kWrite);
    if (const SystemError error = file_.Close())
        return error;
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        return ErrorFromErrno(errno, Access::kWrite);
    temporary_.clear();
    SyncFolder(ParentOf(target_));
    return {};
}

} // namespace platform
