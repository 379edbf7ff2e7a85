#include "platform/desktop/ShellDelete.h"

#include "platform/Files.h"
#include "platform/HostPath.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace platform {
namespace {

// A path to something inside a drive, walked downwards only. What deletes must be sure of its place.
bool IsInsideDrive(std::string_view path) {
    if (path.size() < 4 || path[1] != ':' || path[2] != '\\')
        return false;
    for (std::size_t from = 3; from <= path.size();) {
        const std::size_t to = std::min(path.find('\\', from), path.size());
        const std::string_view name = path.substr(from, to - from);
        if (name.empty() || name == "." || name == "..")
            return false;
        from = to + 1;
    }
    return true;
}

} // namespace

bool IsFolder(const std::string& path) {
    const auto attributes = GetFileAttributes(path);
    return attributes && (*attributes & kAttributeDirectory) != 0;
}

bool ShellDelete(const std::string& path) {
    // A last backslash would have the system follow a link.
    std::string_view bare = path;
    if (bare.size() > 3 && bare.back() == '\\')
        bare.remove_suffix(1);
    if (!IsInsideDrive(bare))
        return false;
    const std::string host = HostPathOf(bare);
    if (host.empty())
        return false;
    std::error_code error;
    const auto removed =
        std::filesystem::remove_all(std::filesystem::path(std::u8string(host.begin(), host.end())), error);
    return !error && removed > 0;
}

} // namespace platform
