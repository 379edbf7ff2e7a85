#include "DriveSetting.h"

#include "HostNames.h"

#include <algorithm>

namespace platform {
namespace {

DriveType TypeOfName(std::string_view name) {
    if (name == "removable")
        return DriveType::kRemovable;
    if (name == "fixed")
        return DriveType::kFixed;
    if (name == "remote")
        return DriveType::kRemote;
    if (name == "cdrom")
        return DriveType::kCdRom;
    if (name == "ramdisk")
        return DriveType::kRamDisk;
    return DriveType::kUnknown;
}

DriveEntry ParseDrive(std::string_view part) {
    DriveEntry drive;
    const std::size_t colon = part.find(':');
    if (part.size() < 2 || part[1] != '=' || colon == std::string_view::npos || !IsDriveLetter(part[0]))
        return drive;
    const std::string_view root = part.substr(colon + 1);
    if (root.empty() || root[0] != '/')
        return drive;
    drive.letter = UpperDriveLetter(part[0]);
    drive.type = TypeOfName(part.substr(2, colon - 2));
    drive.root = JoinHostPath("/", SplitComponents(root, "/"));
    return drive;
}

} // namespace

std::vector<DriveEntry> ParseDriveSetting(std::string_view setting) {
    std::vector<DriveEntry> drives;
    while (!setting.empty()) {
        const std::size_t end = std::min(setting.find(';'), setting.size());
        const DriveEntry drive = ParseDrive(setting.substr(0, end));
        setting.remove_prefix(std::min(end + 1, setting.size()));
        const auto same = [&](const DriveEntry& other) { return other.letter == drive.letter; };
        if (drive.letter != 0 && std::none_of(drives.begin(), drives.end(), same))
            drives.push_back(drive);
    }
    return drives;
}

} // namespace platform
