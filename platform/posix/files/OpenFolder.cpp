#include "platform/OpenFolder.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/FolderNames.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr base::SystemError kNoSuchPath{base::kErrorPathNotFound};

int NoFollow(Links links) {
    return links == Links::kThemselves ? O_NOFOLLOW : 0;
}

EntryKind KindOf(const struct stat& status) {
    if (S_ISREG(status.st_mode))
        return EntryKind::kFile;
    if (S_ISDIR(status.st_mode))
        return EntryKind::kFolder;
    return S_ISLNK(status.st_mode) ? EntryKind::kLink : EntryKind::kOther;
}

/// Opens a folder; one that may be entered but not listed is opened too.
HostFile OpenAt(int folder, const std::string& name, Links links) {
    const int flags = O_DIRECTORY | O_CLOEXEC | NoFollow(links);
    HostFile opened(::openat(folder, name.c_str(), O_RDONLY | flags));
    if (!opened.IsOpen() && errno == EACCES)
        opened = HostFile(::openat(folder, name.c_str(), O_PATH | flags));
    return opened;
}

} // namespace

std::string TextOf(const EntryName& name) {
    return TextOfHostName(name);
}

struct OpenFolder::Host {
    HostFile folder;

    int Descriptor() const { return folder.Descriptor(); }
};

OpenFolder::OpenFolder() = default;

OpenFolder::OpenFolder(std::unique_ptr<Host> host) : host_(std::move(host)) {}

OpenFolder::~OpenFolder() = default;
OpenFolder::OpenFolder(OpenFolder&& other) noexcept = default;
OpenFolder& OpenFolder::operator=(OpenFolder&& other) noexcept = default;

OpenFolder OpenFolder::Holding(const std::string& path, EntryName& name, base::SystemError& error) {
    const std::string host = HostPathOf(path);
    name = host.substr(host.find_last_of('/') + 1);
    error = kNoSuchPath;
    if (name.empty())
        return {};
    HostFile folder = OpenAt(AT_FDCWD, ParentOf(host), Links::kFollowed);
    error = folder.IsOpen() ? base::SystemError{} : ErrorForPath(errno, host, Access::kWrite);
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder)));
}

base::SystemError OpenFolder::Names(std::vector<EntryName>& names) const {
    return NamesIn(host_->Descriptor(), names);
}

std::optional<EntryStatus> OpenFolder::StatusOf(const EntryName& name, Links links,
                                                base::SystemError& error) const {
    struct stat status {};

    const int flags = links == Links::kThemselves ? AT_SYMLINK_NOFOLLOW : 0;
    error = {};
    if (::fstatat(host_->Descriptor(), name.c_str(), &status, flags) == 0)
        return EntryStatus{KindOf(status), IdentityOf(status), AttributesOf(status, name)};
    error = ErrorFromErrno(errno);
    return std::nullopt;
}

bool OpenFolder::IsMountPoint(const EntryName& name) const {
    struct statx status {};

    const bool isKnown = ::statx(host_->Descriptor(), name.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
                                 STATX_TYPE, &status) == 0;
    return isKnown && (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

OpenFolder OpenFolder::OpenSubfolder(const EntryName& name, Links links, base::SystemError& error) const {
    HostFile folder = OpenAt(host_->Descriptor(), name, links);
    error = folder.IsOpen() ? base::SystemError{} : ErrorFromErrno(errno);
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder)));
}

base::SystemError OpenFolder::Remove(const EntryName& name, const EntryStatus& status) const {
    const int flags = status.kind == EntryKind::kFolder ? AT_REMOVEDIR : 0;
    return ::unlinkat(host_->Descriptor(), name.c_str(), flags) == 0 ? base::SystemError{}
                                                                     : ErrorFromErrno(errno, Access::kWrite);
}

} // namespace platform
