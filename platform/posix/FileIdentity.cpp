#include "FileIdentity.h"

#include "HostError.h"
#include "HostTimes.h"
#include "platform/HostPath.h"

#include <cerrno>
#include <sys/stat.h>

namespace platform {

std::optional<FileIdentity> IdentityOf(const std::string& path, SystemError& error) {
    const std::string host = HostPathOf(path);

    struct stat status {};

    if (host.empty()) {
        error = {kErrorPathNotFound};
        return std::nullopt;
    }
    if (::stat(host.c_str(), &status) != 0) {
        error = ErrorForPath(errno, host);
        return std::nullopt;
    }
    error = {};
    return FileIdentity{status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
                        FileTimeFromHost(status.st_mtim), FileTimeFromHost(status.st_ctim)};
}

} // namespace platform
