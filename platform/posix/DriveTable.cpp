#include "DriveTable.h"

#include "DriveSetting.h"
#include "HostNames.h"
#include "Mounts.h"

#include <algorithm>
#include <cstdlib>

namespace platform {
namespace {

const char* Setting() {
    const char* setting = std::getenv("PELLARION_DRIVES");
    return setting == nullptr ? "" : setting;
}

/// Gives removable mounts letters from D on. A mount keeps the letter it has had, for as long as it stays.
void AssignLetters(std::vector<DriveEntry>& drives, const std::vector<DriveEntry>& before) {
    const auto isTaken = [&](char letter) {
        return std::any_of(drives.begin(), drives.end(),
                           [&](const DriveEntry& d) { return d.letter == letter; });
    };
    for (DriveEntry& drive : drives) {
        const auto known = std::find_if(before.begin(), before.end(),
                                        [&](const DriveEntry& d) { return d.root == drive.root; });
        if (known != before.end())
            drive.letter = known->letter;
    }
    for (DriveEntry& drive : drives) {
        for (char letter = 'D'; drive.letter == 0 && letter <= 'Z'; ++letter) {
            if (!isTaken(letter))
                drive.letter = letter;
        }
    }
    std::erase_if(drives, [](const DriveEntry& d) { return d.letter == 0; });
}

const std::vector<DriveEntry>& MountedDrives() {
    static std::vector<DriveEntry> drives;
    static MountWatch watch;
    if (watch.HasChanged() || drives.empty()) {
        std::vector<DriveEntry> found = {{'C', DriveType::kFixed, "/"}};
        for (const std::string& root : RemovableMounts())
            found.push_back({0, DriveType::kRemovable, root});
        AssignLetters(found, drives);
        drives = std::move(found);
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
