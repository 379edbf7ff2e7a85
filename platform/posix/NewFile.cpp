#include "NewFile.h"

#include "HostAttributes.h"
#include "HostError.h"
#include "HostTimes.h"
#include "Replacement.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr mode_t kReadBits = S_IRUSR | S_IRGRP | S_IROTH;
constexpr unsigned kReadToRun = 2;
static_assert(S_IRUSR >> kReadToRun == S_IXUSR && S_IROTH >> kReadToRun == S_IXOTH);

} // namespace

std::unique_ptr<NewFile> NewFile::Start(int folder, std::string hostName, SystemError& error) {
    std::unique_ptr<NewFile> file(new NewFile(folder, std::move(hostName)));
    std::string temporary = TemporaryName();
    file->file_ = HostFile(
        ::openat(folder, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file->file_.IsOpen()) {
        error = ErrorFromErrno(errno, Access::kWrite);
        return nullptr;
    }
    file->temporary_ = std::move(temporary);
    error = {};
    return file;
}

NewFile::~NewFile() {
    if (!temporary_.empty())
        ::unlinkat(folder_, temporary_.c_str(), 0);
}

SystemError NewFile::Write(std::span<const std::uint8_t> data) {
    return WriteFully(file_, data);
}

/// What the medium cannot hold is left out.
void NewFile::ApplyTraits(const FileTraits& traits) const {
    struct stat status {};

    if (traits.executable && ::fstat(file_.Descriptor(), &status) == 0)
        static_cast<void>(
            ::fchmod(file_.Descriptor(), status.st_mode | (status.st_mode & kReadBits) >> kReadToRun));
    if (traits.times) {
        const timespec hostTimes[] = {HostTimeOf(traits.times->lastAccess),
                                      HostTimeOf(traits.times->lastWrite)};
        static_cast<void>(::futimens(file_.Descriptor(), hostTimes));
    }
}

SystemError NewFile::Replace() const {
    struct stat status {};

    if (::fstatat(folder_, hostName_.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && IsProtected(status))
        return {kErrorAccessDenied};
    const int result = ::renameat(folder_, temporary_.c_str(), folder_, hostName_.c_str());
    return result == 0 ? SystemError{} : ErrorFromErrno(errno, Access::kWrite);
}

SystemError NewFile::Commit(const FileTraits& traits) {
    ApplyTraits(traits);
    if (const SystemError error = file_.Close())
        return error;

    // Nearly always the name is free, and one call is enough.
    if (::renameat2(folder_, temporary_.c_str(), folder_, hostName_.c_str(), RENAME_NOREPLACE) != 0) {
        if (const SystemError error = Replace())
            return error;
    }
    temporary_.clear();
    return {};
}

} // namespace platform
