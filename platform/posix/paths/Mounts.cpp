#include "platform/posix/paths/Mounts.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace platform {
namespace {

constexpr const char* kMountTable = "/proc/self/mountinfo";

/// "\040" and its like as the characters they stand for.
std::string Unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape =
            text[i] == '\\' && i + 3 < text.size() &&
            std::all_of(&text[i + 1], &text[i + 4], [](char c) { return c >= '0' && c <= '7'; });
        if (!isEscape) {
            result.push_back(text[i]);
            continue;
        }
        const int value = (text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0');
        result.push_back(static_cast<char>(static_cast<unsigned char>(value)));
        i += 3;
    }
    return result;
}

bool SaysRemovable(const std::string& sysFolder) {
    return ReadHostText(sysFolder + "/removable").substr(0, 1) == "1";
}

bool IsRemovable(const std::string& sysFolder, int depth) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::canonical(sysFolder, error);
    if (error)
        return false;
    // A partition has no mark of its own: its disk is the folder above.
    if (folder.string().find("/usb") != std::string::npos || SaysRemovable(folder.string()) ||
        SaysRemovable(folder.parent_path().string()))
        return true;
    for (std::filesystem::directory_iterator below(folder / "slaves", error), end;
         !error && depth > 0 && below != end; below.increment(error)) {
        if (IsRemovable(below->path().string(), depth - 1))
            return true;
    }
    return false;
}

/// The number of the block device that is mounted. A file system that runs in a process of its own reports
/// none; there the source says it.
std::string BlockDeviceOf(const Mount& mount) {
    struct stat status {};

    if (!mount.device.starts_with("0:") || !mount.source.starts_with("/dev/") ||
        ::stat(mount.source.c_str(), &status) != 0 || !S_ISBLK(status.st_mode))
        return mount.device;
    return std::to_string(major(status.st_rdev)) + ":" + std::to_string(minor(status.st_rdev));
}

} // namespace

MountWatch::MountWatch() : file_(::open(kMountTable, O_RDONLY | O_CLOEXEC)) {}

bool MountWatch::HasChanged() {
    const bool first = !asked_;
    asked_ = true;
    pollfd request{file_.Descriptor(), POLLPRI, 0};
    // The kernel raises this once after each change of the mounts (proc(5)).
    const bool raised = !file_.IsOpen() || ::poll(&request, 1, 0) != 0;
    return raised || first;
}

std::vector<Mount> ParseMounts(const std::string& table) {
    std::vector<Mount> mounts;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string id;
        std::string parent;
        Mount mount;
        if (!(fields >> id >> parent >> mount.device >> mount.root >> mount.folder))
            continue;
        mount.root = Unescaped(mount.root);
        mount.folder = Unescaped(mount.folder);
        // Optional fields, a single hyphen, the type and the source.
        std::string field;
        while (fields >> field && field != "-") {
        }
        fields >> field >> mount.source;
        mount.source = Unescaped(mount.source);
        mounts.push_back(mount);
    }
    return mounts;
}

bool IsRemovableDevice(const std::string& sysFolder) {
    constexpr int kMostLayers = 4; // of devices on devices
    return IsRemovable(sysFolder, kMostLayers);
}

std::vector<std::string> RemovableMounts() {
    std::vector<std::string> folders;
    std::vector<std::string> devices;
    for (const Mount& mount : ParseMounts(ReadHostText(kMountTable))) {
        // A part of a file system (a bind mount) and a second mount of one device are no media of their own.
        const std::string device = BlockDeviceOf(mount);
        if (mount.root != "/" || mount.folder == "/" ||
            std::find(devices.begin(), devices.end(), device) != devices.end())
            continue;
        if (!IsRemovableDevice("/sys/dev/block/" + device))
            continue;
        devices.push_back(device);
        folders.push_back(mount.folder);
    }
    return folders;
}

} // namespace platform
