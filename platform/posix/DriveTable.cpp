#include "DriveTable.h"

#include "DriveLetters.h"
#include "DriveSetting.h"
#include "HostNames.h"
#include "Mounts.h"

#include <cstdlib>

namespace platform {
namespace {

const char* Setting() {
    const char* setting = std::getenv("PELLARION_DRIVES");
    return setting == nullptr ? "" : setting;
}

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

const std::vector<DriveEntry>& SetDrives(const char* setting) {
    static std::vector<DriveEntry> drives;
    static std::string read;
    if (read != setting) {
        read = setting;
        drives = ParseDriveSetting(read);
    }
    return drives;
}

} // namespace

const std::vector<DriveEntry>& DriveTable() {
    return IsDriveTableSet() ? SetDrives(Setting()) : MountedDrives();
}

bool IsDriveTableSet() {
    return *Setting() != '\0';
}

const DriveEntry* FindDrive(char letter) {
    if (!IsDriveLetter(letter))
        return nullptr;
    for (const DriveEntry& drive : DriveTable()) {
        if (drive.letter == UpperDriveLetter(letter))
            return &drive;
    }
    return nullptr;
}

} // namespace platform
