#include "platform/Files.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/DriveTable.h"
#include "platform/posix/paths/HostNames.h"
#include "platform/posix/paths/WorkingFolder.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr base::SystemError kNoSuchPath{base::kErrorPathNotFound};

/// The part of a host path behind its last slash, empty for a root.
std::string_view LastName(const std::string& hostPath) {
    return std::string_view(hostPath).substr(hostPath.find_last_of('/') + 1);
}

bool IsDriveRoot(const std::string& hostPath) {
    for (const DriveEntry& drive : DriveTable()) {
        if (drive.root == hostPath)
            return true;
    }
    return false;
}

} // namespace

std::optional<std::uint32_t> GetFileAttributes(const std::string& path) {
    const std::string host = HostPathOf(path);

    struct stat status {};

    if (host.empty() || ::stat(host.c_str(), &status) != 0)
        return std::nullopt;
    return AttributesOf(status, IsDriveRoot(host) ? "" : LastName(host));
}

base::SystemError CreateFolder(const std::string& path) {
    const std::string host = HostPathOf(path);
    if (host.empty())
        return kNoSuchPath;
    // The cache folder around the working folder may not have been used by any program yet.
    if (host == WorkingFolderRoot()) {
        std::error_code ignored;
        std::filesystem::create_directories(ParentOf(host), ignored);
    }
    return ::mkdir(host.c_str(), 0777) == 0 ? base::SystemError{} : ErrorForPath(errno, host, Access::kWrite);
}

base::SystemError DeleteFile(const std::string& path) {
    const std::string host = HostPathOf(path);
    if (host.empty())
        return kNoSuchPath;

    struct stat status {};

    if (::lstat(host.c_str(), &status) != 0)
        return ErrorForPath(errno, host, Access::kWrite);
    if (IsProtected(status))
        return {base::kErrorAccessDenied};
    return ::unlink(host.c_str()) == 0 ? base::SystemError{} : ErrorForPath(errno, host, Access::kWrite);
}

std::optional<std::string> ReadWholeFile(const std::string& path, std::uint64_t maxBytes,
                                         base::SystemError& error) {
    const std::string host = HostPathOf(path);
    error = kNoSuchPath;
    if (host.empty())
        return std::nullopt;

    struct stat status {};

    const HostFile file = OpenForReading(host, status, error);
    if (error)
        return std::nullopt;
    if (static_cast<std::uint64_t>(status.st_size) > maxBytes) {
        error = {base::kErrorInvalidData};
        return std::nullopt;
    }
    std::string content(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t count = 0;
    error = ReadFully(file, {reinterpret_cast<std::uint8_t*>(content.data()), content.size()}, count);
    if (error)
        return std::nullopt;
    content.resize(count);
    return content;
}

} // namespace platform
