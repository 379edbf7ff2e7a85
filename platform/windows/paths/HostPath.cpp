#include "platform/HostPath.h"

#include "base/Letters.h"
#include "base/PathComponents.h"
#include "platform/DriveSetting.h"
#include "platform/Files.h"
#include "platform/windows/Wide.h"
#include "platform/windows/Windows.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

constexpr std::string_view kSeparators = "\\/";

bool DriveExists(char letter) {
    return (::GetLogicalDrives() >> (base::UpperDriveLetter(letter) - 'A') & 1U) != 0;
}

/// A share's "\\server\share", or a drive's "E:"; empty when `path` has neither in front.
std::string_view VolumeOf(std::string_view path) {
    if (path.size() >= 2 && path[1] == ':' && base::IsDriveLetter(path[0]))
        return path.substr(0, 2);
    if (!path.starts_with("\\\\"))
        return "";
    const std::size_t server = path.find_first_of(kSeparators, 2);
    if (server == std::string_view::npos || server == 2)
        return "";
    return path.substr(0, path.find_first_of(kSeparators, server + 1));
}

/// `path`, a volume or a folder, with the components below it. The root of a volume ends in a backslash.
std::string Join(std::string path, const std::vector<std::string>& components) {
    if (components.empty() && VolumeOf(path) == path)
        path.push_back('\\');
    for (const std::string& name : components) {
        if (!path.ends_with('\\'))
            path.push_back('\\');
        path += name;
    }
    return path;
}

std::wstring HostCurrentFolder() {
    std::wstring folder(::GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

} // namespace

std::string HostPathOf(std::string_view path) {
    const std::string_view volume = VolumeOf(path);
    if (volume.empty() || path.find('\0') != std::string_view::npos)
        return "";
    const std::vector<std::string> components =
        base::SplitComponents(path.substr(volume.size()), kSeparators);
    std::string root(volume);
    if (root.size() == 2) {
        root[0] = base::UpperDriveLetter(root[0]);
        const DriveEntry* set = FindSetDrive(root[0]);
        if (set != nullptr)
            root = set->root;
        else if (IsDriveTableSet() || !DriveExists(root[0]))
            return "";
    }
    return Join(std::move(root), components);
}

std::string PathFromHost(std::string_view hostPath) {
    if (hostPath.empty() || hostPath.find('\0') != std::string_view::npos)
        return "";
    std::string absolute(hostPath);
    if (VolumeOf(absolute).empty()) {
        const std::string current = Utf8OfWide(HostCurrentFolder());
        const bool isFromRoot = kSeparators.find(absolute[0]) != std::string_view::npos;
        absolute = (isFromRoot ? std::string(VolumeOf(current)) : current) + "\\" + absolute;
    }
    const std::string_view volume = VolumeOf(absolute);
    std::string path =
        Join(std::string(volume),
             base::SplitComponents(std::string_view(absolute).substr(volume.size()), kSeparators));
    if (!IsDriveTableSet())
        return path;
    const DriveEntry* best = nullptr;
    for (const DriveEntry& drive : SetDrives()) {
        const bool holds = base::StartsWithNoCase(path, drive.root) &&
                           (path.size() == drive.root.size() || path[drive.root.size()] == '\\');
        if (holds && (best == nullptr || drive.root.size() > best->root.size()))
            best = &drive;
    }
    if (best == nullptr)
        return "";
    return Join(std::string(1, best->letter) + ":",
                base::SplitComponents(std::string_view(path).substr(best->root.size()), kSeparators));
}

std::string CurrentFolder() {
    const std::string folder = PathFromHost(Utf8OfWide(HostCurrentFolder()));
    return folder.empty() ? "C:\\" : folder;
}

std::wstring WithPrefix(std::string_view hostPath) {
    if (hostPath.empty())
        return L"";
    if (hostPath.starts_with("\\\\"))
        return L"\\\\?\\UNC" + WideOf(hostPath.substr(1));
    return L"\\\\?\\" + WideOf(hostPath);
}

std::wstring WidePathOf(std::string_view path) {
    return WithPrefix(HostPathOf(path));
}

std::wstring JoinWide(const std::wstring& path, std::wstring_view name) {
    std::wstring joined = path;
    if (!joined.ends_with(L'\\'))
        joined.push_back(L'\\');
    return joined.append(name);
}

} // namespace platform
