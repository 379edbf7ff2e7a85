#include "Mounts.h"

#include "HostFile.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <unistd.h>

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

} // namespace

MountWatch::MountWatch() : file_(::open(kMountTable, O_RDONLY | O_CLOEXEC)) {}

MountWatch::~MountWatch() {
    if (file_ >= 0)
        ::close(file_);
}

bool MountWatch::HasChanged() {
    const bool first = !asked_;
    asked_ = true;
    pollfd request{file_, POLLPRI, 0};
    // The kernel raises this once after each change of the mounts (proc(5)).
    const bool raised = file_ < 0 || ::poll(&request, 1, 0) != 0;
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
        mounts.push_back(mount);
    }
    return mounts;
}

bool IsRemovableDevice(const std::string& sysFolder) {
    char* resolved = ::realpath(sysFolder.c_str(), nullptr);
    if (resolved == nullptr)
        return false;
    const std::string folder = resolved;
    std::free(resolved);
    // A partition has no mark of its own: its disk is the folder above.
    return folder.find("/usb") != std::string::npos || SaysRemovable(folder) ||
           SaysRemovable(folder.substr(0, folder.find_last_of('/')));
}

std::vector<std::string> RemovableMounts() {
    std::vector<std::string> folders;
    std::vector<std::string> devices;
    for (const Mount& mount : ParseMounts(ReadHostText(kMountTable))) {
        // A part of a file system (a bind mount) and a second mount of one device are no media of their own.
        if (mount.root != "/" || mount.folder == "/" ||
            std::find(devices.begin(), devices.end(), mount.device) != devices.end())
            continue;
        if (!IsRemovableDevice("/sys/dev/block/" + mount.device))
            continue;
        devices.push_back(mount.device);
        folders.push_back(mount.folder);
    }
    return folders;
}

} // namespace platform
