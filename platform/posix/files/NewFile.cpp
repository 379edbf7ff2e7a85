#include "platform/posix/files/NewFile.h"

#include "platform/posix/files/CopyContent.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostTimes.h"
#include "platform/posix/files/OpenedFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr std::string_view kStart = ".pellarion-";
constexpr std::string_view kEnd = ".tmp";
/// Begins the names of staged files, which alone are locked while somebody uses them.
constexpr std::string_view kStagedMark = ".staged";

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t kAll = 0666;
constexpr mode_t kReadBits = S_IRUSR | S_IRGRP | S_IROTH;
constexpr unsigned kReadToRun = 2;
static_assert(S_IRUSR >> kReadToRun == S_IXUSR && S_IROTH >> kReadToRun == S_IXOTH);

/// A name that differs at every call in this process and from those of other processes. The time is part of
/// it, because after a power failure a process with the same number may have left a file behind.
std::string TemporaryName() {
    static std::atomic<unsigned> counter{0};
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return std::string(kStart) + std::to_string(::getpid()) + "-" + std::to_string(now.tv_sec) + "-" +
           std::to_string(now.tv_nsec) + "-" + std::to_string(counter++) + std::string(kEnd);
}

HostFile MakeFile(int folder, const std::string& name, mode_t mode, base::SystemError& error) {
    HostFile file(::openat(folder, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    error = file.IsOpen() ? base::SystemError{} : ErrorFromErrno(errno, Access::kWrite);
    return file;
}

base::SystemError SyncFile(const HostFile& file) {
    return ::fsync(file.Descriptor()) == 0 ? base::SystemError{} : ErrorFromErrno(errno, Access::kWrite);
}

} // namespace

NewFile StartFileIn(int folder, NewFileUse use, base::SystemError& error) {
    std::string name = std::string(use == NewFileUse::kStaged ? kStagedMark : "") + TemporaryName();
    HostFile file = MakeFile(folder, name, use == NewFileUse::kCopy ? kOwnerOnly : kAll, error);
    // Where files cannot be locked, no file is taken for abandoned.
    if (!error && use == NewFileUse::kStaged)
        static_cast<void>(::flock(file.Descriptor(), LOCK_EX | LOCK_NB));
    return error ? NewFile()
                 : NewFile(std::make_unique<NewFile::Host>(std::move(file), folder, std::move(name)));
}

NewFile CreateFileIn(int folder, const std::string& hostName, base::SystemError& error) {
    HostFile file = MakeFile(folder, hostName, kAll, error);
    if (error.code == base::kErrorAlreadyExists)
        error = {base::kErrorFileExists};
    return error ? NewFile() : NewFile(std::make_unique<NewFile::Host>(std::move(file), folder, hostName));
}

void RemoveIfAbandoned(int folder, const std::string& hostName) {
    if (!hostName.starts_with(std::string(kStagedMark) + std::string(kStart)) || !hostName.ends_with(kEnd))
        return;
    const HostFile file(::openat(folder, hostName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.IsOpen() && ::flock(file.Descriptor(), LOCK_EX | LOCK_NB) == 0)
        ::unlinkat(folder, hostName.c_str(), 0);
}

NewFile::Host::~Host() {
    if (!name.empty())
        ::unlinkat(folder, name.c_str(), 0);
}

/// Reports what the system still has to say about writes. A file that is on the medium has nothing more to
/// say: it stays open, and with that locked, until it has its name.
base::SystemError NewFile::Host::End(Durability durability) {
    return durability == Durability::kOnMedium ? SyncFile(file) : file.Close();
}

base::SystemError NewFile::Host::Rename(const std::string& to, unsigned flags) {
    if (::renameat2(folder, name.c_str(), folder, to.c_str(), flags) != 0)
        return ErrorFromErrno(errno, Access::kWrite);
    name.clear();
    return {};
}

base::SystemError NewFile::Host::RenameOver(const std::string& to) {
    struct stat status {};

    if (::fstatat(folder, to.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && IsProtected(status))
        return {base::kErrorAccessDenied};
    return Rename(to, 0);
}

/// No failure is reported, since the file itself is safe.
void NewFile::Host::SyncName(Durability durability) const {
    if (durability == Durability::kOnMedium)
        ::fsync(folder);
}

NewFile::NewFile() = default;

NewFile::NewFile(std::unique_ptr<Host> host) : host_(std::move(host)) {}

NewFile::~NewFile() = default;
NewFile::NewFile(NewFile&& other) noexcept = default;
NewFile& NewFile::operator=(NewFile&& other) noexcept = default;

base::SystemError NewFile::Write(std::span<const std::uint8_t> data) {
    return WriteFully(host_->file, data);
}

base::SystemError NewFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) {
    return WriteFullyAt(host_->file, offset, data);
}

std::size_t NewFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) const {
    std::size_t count = 0;
    ReadFullyAt(host_->file, offset, buffer, count);
    return count;
}

std::uint64_t NewFile::Size() const {
    struct stat status {};

    return ::fstat(host_->file.Descriptor(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

CopyResult NewFile::Fill(const OpenedFile& from, const std::function<bool(std::uint64_t)>& goOn) {
    const OpenedFile::Host& source = from.OfSystem();
    return CopyContent(source.file, host_->file, static_cast<std::uint64_t>(source.status.st_size), goOn);
}

void NewFile::KeepOwnership(const EntryName& replaced) {
    struct stat status {};

    if (::fstatat(host_->folder, replaced.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(status.st_mode))
        return;
    // Media without modes or owners refuse both; the content matters more.
    if (::fchown(host_->file.Descriptor(), status.st_uid, status.st_gid) != 0)
        errno = 0;
    if (::fchmod(host_->file.Descriptor(), status.st_mode & 07777) != 0)
        errno = 0;
}

void NewFile::KeepTraits(const OpenedFile& from, ReadOnlyMark readOnly) {
    const struct stat& status = from.OfSystem().status;
    GiveTraits(host_->file, status, status.st_mode | (readOnly == ReadOnlyMark::kDropped ? S_IWUSR : 0));
}

void NewFile::SetTraits(const FileTraits& traits) {
    const int descriptor = host_->file.Descriptor();

    struct stat status {};

    if (traits.executable && ::fstat(descriptor, &status) == 0)
        static_cast<void>(::fchmod(descriptor, status.st_mode | (status.st_mode & kReadBits) >> kReadToRun));
    if (traits.times) {
        const timespec hostTimes[] = {HostTimeOf(traits.times->lastAccess),
                                      HostTimeOf(traits.times->lastWrite)};
        static_cast<void>(::futimens(descriptor, hostTimes));
    }
}

base::SystemError NewFile::Sync() {
    return SyncFile(host_->file);
}

void NewFile::DropCache() {
    static_cast<void>(::posix_fadvise(host_->file.Descriptor(), 0, 0, POSIX_FADV_DONTNEED));
}

base::SystemError NewFile::TakeName(const EntryName& name, Replacing replacing, Durability durability) {
    base::SystemError error = host_->End(durability);
    if (error)
        return error;
    if (replacing == Replacing::kReadOnlyToo)
        error = host_->Rename(name, 0);
    else if (host_->Rename(name, RENAME_NOREPLACE)) // nearly always the name is free, and one call is enough
        error = host_->RenameOver(name);
    if (!error)
        host_->SyncName(durability);
    return error;
}

base::SystemError NewFile::Keep(Durability durability) {
    if (const base::SystemError error = host_->End(durability))
        return error;
    host_->name.clear();
    host_->SyncName(durability);
    return {};
}

} // namespace platform
