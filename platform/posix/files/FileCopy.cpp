#include "platform/posix/files/FileCopy.h"

#include "platform/posix/files/CopyContent.h"

#include <cerrno>

namespace platform {
namespace {

constexpr mode_t kPermissions = 0777;

} // namespace

OpenedFile::OpenedFile() = default;

OpenedFile::OpenedFile(std::unique_ptr<Host> host) : host_(std::move(host)) {}

OpenedFile::~OpenedFile() = default;
OpenedFile::OpenedFile(OpenedFile&& other) noexcept = default;
OpenedFile& OpenedFile::operator=(OpenedFile&& other) noexcept = default;

base::SystemError OpenedFile::Read(std::span<std::uint8_t> buffer, std::size_t& count) {
    return ReadFully(host_->file, buffer, count);
}

FileCopy::FileCopy() = default;

FileCopy::FileCopy(std::unique_ptr<Host> host) : host_(std::move(host)) {}

FileCopy::~FileCopy() = default;
FileCopy::FileCopy(FileCopy&& other) noexcept = default;
FileCopy& FileCopy::operator=(FileCopy&& other) noexcept = default;

void KeepTraits(const HostFile& file, const struct stat& status) {
    const timespec times[] = {status.st_atim, status.st_mtim};
    if (::futimens(file.Descriptor(), times) != 0)
        errno = 0;
    if (::fchmod(file.Descriptor(), status.st_mode & kPermissions) != 0)
        errno = 0;
}

CopyResult FileCopy::Fill(const OpenedFile& from, const std::function<bool(std::uint64_t)>& goOn) {
    const OpenedFile::Host& source = from.OfSystem();
    return CopyContent(source.file, host_->file.File(), static_cast<std::uint64_t>(source.status.st_size),
                       goOn);
}

void FileCopy::KeepTraits(const OpenedFile& from) {
    platform::KeepTraits(host_->file.File(), from.OfSystem().status);
}

base::SystemError FileCopy::Sync() {
    return host_->file.Sync();
}

base::SystemError FileCopy::TakeName(const EntryName& name) {
    if (const base::SystemError error = host_->file.File().Close())
        return error;
    return host_->file.TakeName(name);
}

} // namespace platform
