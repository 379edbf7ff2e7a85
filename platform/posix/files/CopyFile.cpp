#include "platform/Files.h"
#include "platform/HostPath.h"
#include "platform/posix/files/CopyContent.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/files/Replacement.h"

#include <cerrno>
#include <sys/stat.h>

namespace platform {
namespace {

bool IsSameFile(const struct stat& status, const std::string& hostPath) {
    struct stat other {};

    return ::stat(hostPath.c_str(), &other) == 0 && other.st_dev == status.st_dev &&
           other.st_ino == status.st_ino;
}

} // namespace

base::SystemError CopyFile(const std::string& from, const std::string& to) {
    const std::string source = HostPathOf(from);
    const std::string target = HostPathOf(to);
    if (source.empty() || target.empty())
        return {base::kErrorPathNotFound};

    struct stat status {};

    base::SystemError error;
    const HostFile file = OpenForReading(source, status, error);
    if (error)
        return error;
    if (IsSameFile(status, target))
        return {base::kErrorSharingViolation};
    Replacement replacement(target);
    if (replacement.Error())
        return replacement.Error();
    const auto goOn = [](std::uint64_t) { return true; };
    if ((error =
             CopyContent(file, replacement.File(), static_cast<std::uint64_t>(status.st_size), goOn).error))
        return error;
    // The copy is as old as its source, but always the user's own to change: a copy from a write-protected
    // medium must not be protected itself. Media that keep neither are no failure.
    const timespec times[] = {status.st_atim, status.st_mtim};
    if (::futimens(replacement.File().Descriptor(), times) != 0)
        errno = 0;
    if (::fchmod(replacement.File().Descriptor(), (status.st_mode & 0777) | S_IWUSR) != 0)
        errno = 0;
    // What takes no other file's place can be copied again: it need not wait for the medium.
    return replacement.Commit(replacement.Replaces());
}

} // namespace platform
