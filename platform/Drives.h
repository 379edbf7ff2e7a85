#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// The drive types, numbered as in the drive-type query of Windows.
enum class DriveType {
    kUnknown = 0,
    kNoRoot = 1,
    kRemovable = 2,
    kFixed = 3,
    kRemote = 4,
    kCdRom = 5,
    kRamDisk = 6
};

/// Type of the drive whose root is `root`, such as "E:\". Asked anew at every call.
DriveType GetDriveType(const std::string& root);

/// What the free-space query reports of a drive.
struct DriveSpace {
    std::uint32_t sectorsPerCluster = 0;
    std::uint32_t bytesPerSector = 0;
    std::uint64_t freeClusters = 0; ///< that this user may use
    std::uint64_t totalClusters = 0;
};

/// Free space of the drive whose root is `root`. Returns nothing when there is no such drive or it does not
/// respond.
std::optional<DriveSpace> GetDriveSpace(const std::string& root);

} // namespace platform
