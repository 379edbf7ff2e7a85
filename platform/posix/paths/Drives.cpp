#include "platform/Drives.h"

#include "platform/posix/paths/DriveTable.h"

#include <cerrno>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace platform {
namespace {

constexpr std::uint32_t kSectorSize = 512;

const DriveEntry* DriveOfRoot(const std::string& root) {
    return root.size() >= 2 && root[1] == ':' ? FindDrive(root[0]) : nullptr;
}

} // namespace

DriveType GetDriveType(const std::string& root) {
    const DriveEntry* drive = DriveOfRoot(root);

    struct stat status {};

    if (drive == nullptr)
        return DriveType::kNoRoot;
    // A drive whose medium does not respond still has its type; a drive without a folder does not exist.
    if (::stat(drive->root.c_str(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? DriveType::kNoRoot : drive->type;
    return S_ISDIR(status.st_mode) ? drive->type : DriveType::kNoRoot;
}

std::optional<DriveSpace> GetDriveSpace(const std::string& root) {
    const DriveEntry* drive = DriveOfRoot(root);

    struct statvfs space {};

    if (drive == nullptr || ::statvfs(drive->root.c_str(), &space) != 0 || space.f_blocks == 0)
        return std::nullopt;
    const auto cluster = static_cast<std::uint32_t>(space.f_frsize != 0 ? space.f_frsize : space.f_bsize);
    const bool isWhole = cluster != 0 && cluster % kSectorSize == 0;
    DriveSpace result;
    result.bytesPerSector = isWhole ? kSectorSize : cluster;
    result.sectorsPerCluster = isWhole ? cluster / kSectorSize : 1;
    result.freeClusters = space.f_bavail;
    result.totalClusters = space.f_blocks;
    return result;
}

} // namespace platform
