#include "base/FileName.h"
#include "platform/HostPath.h"
#include "platform/TreeWork.h"
#include "platform/posix/files/CopyContent.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/files/TemporaryFile.h"
#include "platform/posix/paths/FolderNames.h"
#include "platform/posix/paths/HostNames.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr mode_t kPermissions = 0777;

/// One place, as the host and as this program write it.
struct Place {
    std::string host;
    std::string path;

    Place Inside(const std::string& hostName) const {
        const std::string separator = path.ends_with('\\') ? "" : "\\";
        return {JoinHostPath(host, {hostName}), path + separator + TextOfHostName(hostName)};
    }
};

/// What the system knows a file or folder by, however it is reached.
struct Identity {
    dev_t device;
    ino_t inode;

    explicit Identity(const struct stat& status) : device(status.st_dev), inode(status.st_ino) {}

    friend bool operator==(const Identity&, const Identity&) = default;
};

std::optional<struct stat> StatusOf(const std::string& hostPath, int flags = 0) {
    struct stat status {};

    if (::fstatat(AT_FDCWD, hostPath.c_str(), &status, flags) != 0)
        return std::nullopt;
    return status;
}

/// The folder at one end of a copy, whose medium may be taken away meanwhile.
class CopyEnd {
  public:
    explicit CopyEnd(Place folder) : folder_(std::move(folder)), found_(StatusOf(folder_.host)) {}

    const std::string& Path() const { return folder_.path; }

    /// Nothing, or another folder, is where this one was.
    bool IsGone() const {
        const auto now = StatusOf(folder_.host);
        return found_ && (!now || Identity(*now) != Identity(*found_));
    }

  private:
    Place folder_;
    std::optional<struct stat> found_;
};

class TreeCopy {
  public:
    TreeCopy(FileOperationObserver& observer, const Place& from, const Place& toFolder)
        : work_(observer), ends_{CopyEnd({ParentOf(from.host), std::string(base::FolderOf(from.path))}),
                                 CopyEnd(toFolder)} {}

    FileOutcome Run(const Place& from, const Place& to) {
        CopyEntry(from, to);
        return work_.Outcome();
    }

  private:
    bool IsOver() const { return work_.IsStopped() || isHopeless_; }

    bool Proceed(const Place& place, std::uint64_t entries, std::uint64_t bytes) {
        return work_.Proceed(place.path, entries, bytes);
    }

    void Fail(const Place& place, base::SystemError error) {
        const auto* gone = std::ranges::find_if(ends_, &CopyEnd::IsGone);
        const bool isGone = gone != std::end(ends_);
        isHopeless_ = isHopeless_ || isGone || TreeWork::IsHopeless(error);
        if (isGone)
            work_.Fail(gone->Path(), {base::kErrorNotReady});
        else
            work_.Fail(place.path, error);
    }

    void CopyEntry(const Place& from, const Place& to) {
        if (!Proceed(from, 0, 0))
            return;
        const auto status = StatusOf(from.host);
        if (!status)
            Fail(from, ErrorForPath(errno, from.host));
        else if (S_ISDIR(status->st_mode))
            CopyFolder(from, to, *status);
        else
            CopyFile(from, to, *status);
        if (!IsOver())
            Proceed(from, 1, 0);
    }

    void CopyFile(const Place& from, const Place& to, const struct stat& status) {
        const auto before = StatusOf(to.host);
        if (before && Identity(*before) == Identity(status))
            return;
        if (before && S_ISDIR(before->st_mode)) {
            Fail(to, {base::kErrorAlreadyExists});
            return;
        }
        base::SystemError error;

        struct stat opened {};

        const HostFile source = OpenForReading(from.host, opened, error);
        if (error) {
            Fail(from, error);
            return;
        }
        TemporaryFile target(AT_FDCWD, ParentOf(to.host) + "/", O_WRONLY, S_IRUSR | S_IWUSR);
        if (!target.File().IsOpen()) {
            Fail(to, ErrorForPath(errno, to.host, Access::kWrite));
            return;
        }
        const CopyResult result =
            CopyContent(source, target.File(), static_cast<std::uint64_t>(opened.st_size),
                        [&](std::uint64_t bytes) { return Proceed(from, 0, bytes); });
        if (result.wasStopped)
            return;
        error = result.error;
        if (!error) {
            KeepAttributes(target.File(), opened);
            // Before they take the place of others, the bytes are on the medium.
            error = before ? target.Sync() : base::SystemError{};
        }
        if (!error)
            error = target.File().Close();
        if (!error)
            error = target.TakeName(to.host);
        if (error)
            Fail(from, error);
    }

    /// Media that keep neither times nor permissions are no failure.
    static void KeepAttributes(const HostFile& file, const struct stat& status) {
        const timespec times[] = {status.st_atim, status.st_mtim};
        if (::futimens(file.Descriptor(), times) != 0)
            errno = 0;
        if (::fchmod(file.Descriptor(), status.st_mode & kPermissions) != 0)
            errno = 0;
    }

    void CopyFolder(const Place& from, const Place& to, const struct stat& status) {
        if (std::ranges::find(open_, Identity(status)) != open_.end()) {
            Fail(from, {base::kErrorBadPathName});
            return;
        }
        const auto before = StatusOf(to.host);
        if (before && Identity(*before) == Identity(status))
            return;
        if (before && !S_ISDIR(before->st_mode)) {
            Fail(to, {base::kErrorAlreadyExists});
            return;
        }
        if (!before && ::mkdir(to.host.c_str(), S_IRWXU) != 0) {
            Fail(to, ErrorForPath(errno, to.host, Access::kWrite));
            return;
        }
        const HostFile made(::open(to.host.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        const auto after = StatusOf(to.host);
        const std::size_t opened = open_.size();
        open_.emplace_back(status);
        if (after)
            open_.emplace_back(*after);
        CopyEntries(from, to);
        open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(opened), open_.end());
        if (!before && made.IsOpen())
            KeepAttributes(made, status);
    }

    void CopyEntries(const Place& from, const Place& to) {
        std::vector<std::string> names;
        if (const base::SystemError error = NamesAt(from.host, names)) {
            Fail(from, error);
            return;
        }
        for (const std::string& name : names) {
            if (IsOver())
                return;
            CopyEntry(from.Inside(name), to.Inside(name));
        }
    }

    static base::SystemError NamesAt(const std::string& hostFolder, std::vector<std::string>& names) {
        const HostFile folder(::open(hostFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        return folder.IsOpen() ? NamesIn(folder.Descriptor(), names) : ErrorForPath(errno, hostFolder);
    }

    TreeWork work_;
    CopyEnd ends_[2];
    std::vector<Identity> open_; ///< folders that are being copied, and those that they are copied to
    bool isHopeless_ = false;
};

} // namespace

FileOutcome CopyTree(const std::string& from, const std::string& toFolder, FileOperationObserver& observer) {
    const Place source{HostPathOf(from), from};
    const Place folder{HostPathOf(toFolder), toFolder};
    if (source.host.empty() || source.host == "/" || folder.host.empty()) {
        observer.Failed(source.host.empty() ? from : toFolder, {base::kErrorPathNotFound});
        return FileOutcome::kFailed;
    }
    const std::string name = source.host.substr(source.host.find_last_of('/') + 1);
    return TreeCopy(observer, source, folder).Run(source, folder.Inside(name));
}

} // namespace platform
