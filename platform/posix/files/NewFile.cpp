#include "platform/posix/files/NewFile.h"

#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostTimes.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace platform {
namespace {

constexpr mode_t kReadBits = S_IRUSR | S_IRGRP | S_IROTH;
constexpr unsigned kReadToRun = 2;
static_assert(S_IRUSR >> kReadToRun == S_IXUSR && S_IROTH >> kReadToRun == S_IXOTH);

} // namespace

std::unique_ptr<NewFile> NewFile::Start(int folder, std::string hostName, base::SystemError& error) {
    std::unique_ptr<NewFile> file(new NewFile(folder, std::move(hostName)));
    error = file->staged_.File().IsOpen() ? base::SystemError{} : ErrorFromErrno(errno, Access::kWrite);
    return error ? nullptr : std::move(file);
}

base::SystemError NewFile::Write(std::span<const std::uint8_t> data) {
    return WriteFully(staged_.File(), data);
}

/// What the medium cannot hold is left out.
void NewFile::ApplyTraits(const FileTraits& traits) const {
    const int descriptor = staged_.File().Descriptor();

    struct stat status {};

    if (traits.executable && ::fstat(descriptor, &status) == 0)
        static_cast<void>(::fchmod(descriptor, status.st_mode | (status.st_mode & kReadBits) >> kReadToRun));
    if (traits.times) {
        const timespec hostTimes[] = {HostTimeOf(traits.times->lastAccess),
                                      HostTimeOf(traits.times->lastWrite)};
        static_cast<void>(::futimens(descriptor, hostTimes));
    }
}

base::SystemError NewFile::Replace() {
    struct stat status {};

    if (::fstatat(folder_, hostName_.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && IsProtected(status))
        return {base::kErrorAccessDenied};
    return staged_.TakeName(hostName_);
}

base::SystemError NewFile::Commit(const FileTraits& traits) {
    ApplyTraits(traits);
    if (const base::SystemError error = staged_.File().Close())
        return error;
    // Nearly always the name is free, and one call is enough.
    return staged_.TakeName(hostName_, RENAME_NOREPLACE) ? Replace() : base::SystemError{};
}

} // namespace platform
