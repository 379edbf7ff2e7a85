#include "base/FileName.h"
#include "platform/FileOperations.h"
#include "platform/HostPath.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace platform {
namespace {

std::optional<struct stat> StatusOfLink(const std::string& hostPath) {
    struct stat status {};

    if (::lstat(hostPath.c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

bool IsSame(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// Where the file system cannot refuse to replace by itself, the question has been asked just before.
base::SystemError RenameOnto(const std::string& from, const std::string& to, bool isFree) {
    const unsigned flags = isFree ? RENAME_NOREPLACE : 0;
    int result = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags);
    if (result != 0 && flags != 0 && (errno == EINVAL || errno == ENOSYS))
        result = ::rename(from.c_str(), to.c_str());
    return result == 0 ? base::SystemError{} : ErrorForPath(errno, to, Access::kWrite);
}

std::string Resolved(const std::string& hostPath) {
    char* resolved = ::realpath(hostPath.c_str(), nullptr);
    const std::string result = resolved == nullptr ? "" : resolved;
    std::free(resolved);
    return result;
}

} // namespace

base::SystemError RenameEntry(const std::string& from, const std::string& to) {
    const std::string source = HostPathOf(from);
    const std::string folder = HostPathOf(base::FolderOf(to));
    const std::string_view name = base::LastComponent(to);
    if (source.empty() || folder.empty())
        return {base::kErrorPathNotFound};
    if (!base::IsFileName(name))
        return {base::kErrorInvalidName};
    const auto status = StatusOfLink(source);
    if (!status)
        return ErrorForPath(errno, source);
    // In any letter case a name is taken, unless it is the entry's own.
    const auto taken = StatusOfLink(HostPathOf(to));
    if (taken && !IsSame(*taken, *status))
        return {base::kErrorAlreadyExists};
    const std::string target = JoinHostPath(folder, {HostNameOf(name)});
    if (const auto exact = StatusOfLink(target);
        exact && target != source && exact->st_nlink > 1 && !S_ISDIR(exact->st_mode))
        return {
            base::kErrorAlreadyExists}; // another name of the same file, which renaming would leave as it is
    return RenameOnto(source, target, !taken);
}

bool IsWithin(const std::string& folder, const std::string& inner) {
    const std::string outside = Resolved(HostPathOf(folder));
    const std::string inside = Resolved(HostPathOf(inner));
    if (outside.empty() || inside.empty())
        return false;
    return inside == outside || inside.starts_with(outside == "/" ? outside : outside + '/');
}

} // namespace platform
