#include "platform/posix/files/OpenedFile.h"

#include <cerrno>

namespace platform {

OpenedFile::OpenedFile() = default;

OpenedFile::OpenedFile(std::unique_ptr<Host> host) : host_(std::move(host)) {}

OpenedFile::~OpenedFile() = default;
OpenedFile::OpenedFile(OpenedFile&& other) noexcept = default;
OpenedFile& OpenedFile::operator=(OpenedFile&& other) noexcept = default;

base::SystemError OpenedFile::Read(std::span<std::uint8_t> buffer, std::size_t& count) {
    return ReadFully(host_->file, buffer, count);
}

void GiveTraits(const HostFile& file, const struct stat& status, mode_t mode) {
    const timespec times[] = {status.st_atim, status.st_mtim};
    if (::futimens(file.Descriptor(), times) != 0)
        errno = 0;
    if (::fchmod(file.Descriptor(), mode & 0777) != 0)
        errno = 0;
}

} // namespace platform
