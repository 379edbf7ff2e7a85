#include "platform/OpenFolder.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/NewFile.h"
#include "platform/posix/files/OpenedFile.h"
#include "platform/posix/paths/FolderNames.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <cstdlib>
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

bool IsLink(const std::string& hostPath) {
    struct stat status {};

    return ::lstat(hostPath.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

EntryStatus EntryStatusOf(const struct stat& status, const std::string& hostName) {
    return {KindOf(status), IdentityOf(status), AttributesOf(status, hostName),
            (status.st_mode & S_IXUSR) != 0};
}

} // namespace

std::string TextOf(const EntryName& name) {
    return TextOfHostName(name);
}

EntryName EntryNameOf(std::string_view text) {
    return HostNameOf(text);
}

struct OpenFolder::Host {
    explicit Host(HostFile opened, std::string openedBy = {})
        : folder(std::move(opened)), path(std::move(openedBy)) {}

    HostFile folder;
    std::string path; ///< that it was opened by; empty for one that was reached through another

    int Descriptor() const { return folder.Descriptor(); }
};

OpenFolder::OpenFolder() = default;

OpenFolder::OpenFolder(std::unique_ptr<Host> host) : host_(std::move(host)) {}

OpenFolder::~OpenFolder() = default;
OpenFolder::OpenFolder(OpenFolder&& other) noexcept = default;
OpenFolder& OpenFolder::operator=(OpenFolder&& other) noexcept = default;

OpenFolder OpenFolder::At(const std::string& path, Links links, base::SystemError& error) {
    const std::string host = HostPathOf(path);
    error = kNoSuchPath;
    if (host.empty())
        return {};
    HostFile folder = OpenAt(AT_FDCWD, host, links);
    error = folder.IsOpen() ? base::SystemError{} : ErrorForPath(errno, host);
    // The system refuses a link and a file by the same number.
    if (error && links == Links::kThemselves && IsLink(host))
        error = {base::kErrorBadPathName};
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder), host));
}

namespace {

/// Opens the folder that holds the entry at a host path.
HostFile OpenParent(const std::string& host, EntryName& name, base::SystemError& error) {
    name = host.substr(host.find_last_of('/') + 1);
    error = kNoSuchPath;
    if (name.empty())
        return {};
    HostFile folder = OpenAt(AT_FDCWD, ParentOf(host), Links::kFollowed);
    error = folder.IsOpen() ? base::SystemError{} : ErrorForPath(errno, host, Access::kWrite);
    return folder;
}

/// Where the link at `host` leads; the path itself when it is no link or leads nowhere.
std::string LinkTarget(const std::string& host) {
    char* resolved = ::realpath(host.c_str(), nullptr);
    std::string target = resolved == nullptr ? host : resolved;
    std::free(resolved);
    return target;
}

} // namespace

OpenFolder OpenFolder::Holding(const std::string& path, EntryName& name, base::SystemError& error) {
    const std::string host = HostPathOf(path);
    HostFile folder = OpenParent(host, name, error);
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder), ParentOf(host)));
}

OpenFolder OpenFolder::HoldingTarget(const std::string& path, EntryName& name, base::SystemError& error) {
    const std::string host = LinkTarget(HostPathOf(path));
    HostFile folder = OpenParent(host, name, error);
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder), ParentOf(host)));
}

bool OpenFolder::IsInPlace() const {
    struct stat here {};

    struct stat there {};

    return ::stat(host_->path.c_str(), &there) == 0 && ::fstat(host_->Descriptor(), &here) == 0 &&
           here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

std::optional<EntryStatus> OpenFolder::Status() const {
    struct stat status {};

    if (::fstat(host_->Descriptor(), &status) != 0)
        return std::nullopt;
    return EntryStatusOf(status, "");
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
        return EntryStatusOf(status, name);
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

OpenedFile OpenFolder::OpenFile(const EntryName& name, base::SystemError& error) const {
    auto file = std::make_unique<OpenedFile::Host>();
    file->file = OpenForReading(host_->Descriptor(), name, 0, file->status, error);
    return error ? OpenedFile() : OpenedFile(std::move(file));
}

OpenedFile OpenFolder::OpenFileBelow(std::string_view path, base::SystemError& error) const {
    std::string below;
    for (const std::string& component : base::SplitComponents(path, "\\"))
        below += (below.empty() ? "" : "/") + HostNameOf(component);
    auto file = std::make_unique<OpenedFile::Host>();
    file->file = OpenForReading(host_->Descriptor(), below, O_NOFOLLOW, file->status, error);
    return error ? OpenedFile() : OpenedFile(std::move(file));
}

std::optional<EntryStatus> OpenedFile::Status() const {
    struct stat status {};

    if (::fstat(host_->file.Descriptor(), &status) != 0)
        return std::nullopt;
    return EntryStatusOf(status, "");
}

base::SystemError OpenFolder::MakeFolder(const EntryName& name) const {
    return ::mkdirat(host_->Descriptor(), name.c_str(), S_IRWXU) == 0 ? base::SystemError{}
                                                                      : ErrorFromErrno(errno, Access::kWrite);
}

void OpenFolder::KeepTraits(const EntryName& name, const OpenFolder& from) const {
    struct stat status {};

    const HostFile made = OpenAt(host_->Descriptor(), name, Links::kThemselves);
    if (made.IsOpen() && ::fstat(from.host_->Descriptor(), &status) == 0)
        GiveTraits(made, status, status.st_mode);
}

NewFile OpenFolder::StartFile(NewFileUse use, base::SystemError& error) const {
    if (use == NewFileUse::kStaged) {
        std::vector<EntryName> names;
        static_cast<void>(Names(names));
        for (const EntryName& name : names)
            RemoveIfAbandoned(host_->Descriptor(), name);
    }
    return StartFileIn(host_->Descriptor(), use, error);
}

NewFile OpenFolder::CreateFile(const EntryName& name, base::SystemError& error) const {
    return CreateFileIn(host_->Descriptor(), name, error);
}

} // namespace platform
