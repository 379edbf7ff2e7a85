#include "platform/posix/files/HostAttributes.h"

#include "platform/Files.h"
#include "platform/posix/files/HostTimes.h"

namespace platform {
namespace {

bool NobodyMayWrite(const struct stat& status) {
    return (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

std::uint32_t AttributesOf(const struct stat& status, std::string_view name) {
    std::uint32_t attributes = S_ISDIR(status.st_mode) ? kAttributeDirectory : kAttributeArchive;
    if (NobodyMayWrite(status))
        attributes |= kAttributeReadOnly;
    if (name.starts_with('.') && name != "." && name != "..")
        attributes |= kAttributeHidden;
    return attributes;
}

bool IsProtected(const struct stat& status) {
    return S_ISDIR(status.st_mode) || (S_ISREG(status.st_mode) && NobodyMayWrite(status));
}

FileIdentity IdentityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            FileTimeFromHost(status.st_mtim), FileTimeFromHost(status.st_ctim)};
}

} // namespace platform
