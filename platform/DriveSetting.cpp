#include "platform/DriveSetting.h"

#include "base/PathComponents.h"

#include <algorithm>
#include <cstdlib>

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

/// An absolute host path in its shortest form: "/folder" or "X:\\folder". Empty when it is neither.
std::string CleanRoot(std::string_view root) {
    const bool hasLetter = root.size() > 2 && base::IsDriveLetter(root[0]) && root[1] == ':';
    if (!hasLetter && !root.starts_with('/'))
        return "";
    const char separator = hasLetter ? '\\' : '/';
    std::string clean(hasLetter ? root.substr(0, 2) : "");
    for (const std::string& name : base::SplitComponents(root.substr(clean.size()), hasLetter ? "\\/" : "/"))
        clean.append(1, separator).append(name);
    return clean.empty() ? "/" : clean;
}

DriveEntry ParseDrive(std::string_view part) {
    DriveEntry drive;
    const std::size_t colon = part.find(':');
    if (part.size() < 2 || part[1] != '=' || colon == std::string_view::npos || !base::IsDriveLetter(part[0]))
        return drive;
    drive.root = CleanRoot(part.substr(colon + 1));
    if (drive.root.empty())
        return drive;
    drive.letter = base::UpperDriveLetter(part[0]);
    drive.type = TypeOfName(part.substr(2, colon - 2));
    return drive;
}

const char* Setting() {
    const char* setting = std::getenv("PELLARION_DRIVES");
    return setting == nullptr ? "" : setting;
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

bool IsDriveTableSet() {
    return *Setting() != '\0';
}

const std::vector<DriveEntry>& SetDrives() {
    static std::vector<DriveEntry> drives;
    static std::string read;
    if (read != Setting()) {
        read = Setting();
        drives = ParseDriveSetting(read);
    }
    return drives;
}

const DriveEntry* FindSetDrive(char letter) {
    const auto found = std::ranges::find(SetDrives(), base::UpperDriveLetter(letter), &DriveEntry::letter);
    return IsDriveTableSet() && found != SetDrives().end() ? &*found : nullptr;
}

} // namespace platform
