#include "platform/posix/files/Replacement.h"

#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <cstdlib>
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

Replacement::Replacement(const std::string& hostPath) : target_(LinkTarget(hostPath)) {
    struct stat status {};

    replaces_ = ::lstat(target_.c_str(), &status) == 0;
    if (replaces_ && IsProtected(status)) {
        error_ = {base::kErrorAccessDenied};
        return;
    }
    staged_.emplace(AT_FDCWD, ParentOf(target_) + "/", O_WRONLY, 0666);
    if (!File().IsOpen()) {
        error_ = ErrorForPath(errno, target_, Access::kWrite);
        return;
    }
    // Media without modes or owners refuse both; the content matters more.
    if (replaces_ && S_ISREG(status.st_mode)) {
        if (::fchown(File().Descriptor(), status.st_uid, status.st_gid) != 0)
            errno = 0;
        if (::fchmod(File().Descriptor(), status.st_mode & 07777) != 0)
            errno = 0;
    }
}

base::SystemError Replacement::Commit(bool isLasting) {
    if (const base::SystemError error = isLasting ? staged_->Sync() : base::SystemError{})
        return error;
    if (const base::SystemError error = staged_->File().Close())
        return error;
    if (const base::SystemError error = staged_->TakeName(target_))
        return error;
    if (isLasting)
        SyncFolder(ParentOf(target_));
    return {};
}

} // namespace platform
