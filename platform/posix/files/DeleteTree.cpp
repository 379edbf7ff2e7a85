#include "platform/HostPath.h"
#include "platform/TreeWork.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/FolderNames.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace platform {
namespace {

/// Deletes through open folders and never by path, so that nothing outside is reached even when someone puts
/// a link in the place of a folder meanwhile.
class TreeDeletion {
  public:
    explicit TreeDeletion(FileOperationObserver& observer) : work_(observer) {}

    FileOutcome Run(const HostFile& folder, const std::string& hostName, const std::string& path) {
        DeleteEntry(folder.Descriptor(), hostName, path);
        return work_.Outcome();
    }

  private:
    void Fail(const std::string& path, int number) {
        work_.Fail(path, ErrorFromErrno(number, Access::kWrite));
    }

    void DeleteEntry(int folder, const std::string& name, const std::string& path) {
        if (!work_.Proceed(path))
            return;

        struct stat status {};

        if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            Fail(path, errno);
        else if (S_ISDIR(status.st_mode))
            DeleteFolder(folder, name, path);
        else if (::unlinkat(folder, name.c_str(), 0) != 0)
            Fail(path, errno);
        if (!work_.IsStopped())
            work_.Proceed(path, 1);
    }

    static bool IsMountPoint(int folder, const std::string& name) {
        struct statx status {};

        const bool isKnown =
            ::statx(folder, name.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_TYPE, &status) == 0;
        return isKnown && (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    }

    void DeleteFolder(int folder, const std::string& name, const std::string& path) {
        if (IsMountPoint(folder, name)) {
            Fail(path, EBUSY);
            return;
        }
        const std::size_t failuresBefore = work_.Failures();
        const HostFile inner(::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        const int openError = errno;
        if (inner.IsOpen())
            DeleteEntries(inner.Descriptor(), path);
        // What could not be deleted inside has been told already.
        if (work_.IsStopped() || work_.Failures() > failuresBefore)
            return;
        if (::unlinkat(folder, name.c_str(), AT_REMOVEDIR) != 0)
            Fail(path, !inner.IsOpen() ? openError : errno);
    }

    void DeleteEntries(int folder, const std::string& path) {
        // Listed to the end first: deleting while listing may pass entries over.
        std::vector<std::string> names;
        if (const base::SystemError error = NamesIn(folder, names)) {
            work_.Fail(path, error);
            return;
        }
        for (const std::string& name : names) {
            if (work_.IsStopped())
                return;
            DeleteEntry(folder, name, path + '\\' + TextOfHostName(name));
        }
    }

    TreeWork work_;
};

} // namespace

FileOutcome DeleteTree(const std::string& path, FileOperationObserver& observer) {
    const std::string host = HostPathOf(path);
    const std::string name = host.substr(host.find_last_of('/') + 1);
    if (name.empty()) {
        observer.Failed(path, {base::kErrorPathNotFound});
        return FileOutcome::kFailed;
    }
    const HostFile folder(::open(ParentOf(host).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.IsOpen()) {
        observer.Failed(path, ErrorForPath(errno, host, Access::kWrite));
        return FileOutcome::kFailed;
    }
    return TreeDeletion(observer).Run(folder, name, path);
}

} // namespace platform
