#include "platform/posix/paths/DriveTable.h"

#include "platform/posix/paths/DriveLetters.h"
#include "platform/posix/paths/HostNames.h"
#include "platform/posix/paths/Mounts.h"

namespace platform {
namespace {

const std::vector<DriveEntry>& MountedDrives() {
    static std::vector<DriveEntry> drives;
    static MountWatch watch;
    if (watch.HasChanged() || drives.empty()) {
        std::vector<DriveEntry> found = {{'C', DriveType::kFixed, "/"}};
        for (const std::string& root : RemovableMounts())
            found.push_back({0, DriveType::kRemovable, root});
        drives = WithLetters(std::move(found), drives);
    }
    return drives;
}

} // namespace

const std::vector<DriveEntry>& DriveTable() {
    return IsDriveTableSet() ? SetDrives() : MountedDrives();
}

const DriveEntry* FindDrive(char letter) {
    if (!base::IsDriveLetter(letter))
        return nullptr;
    for (const DriveEntry& drive : DriveTable()) {
        if (drive.letter == base::UpperDriveLetter(letter))
            return &drive;
    }
    return nullptr;
}

} // namespace platform
