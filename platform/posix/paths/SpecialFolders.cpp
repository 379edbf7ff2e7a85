#include "platform/SpecialFolders.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/UserFolders.h"

#include <filesystem>
#include <sstream>

namespace platform {
namespace {

bool IsFolder(const std::string& hostPath) {
    std::error_code ignored;
    return std::filesystem::is_directory(hostPath, ignored);
}

/// The value of one line of user-dirs.dirs, `NAME="$HOME/Folder"` or `NAME="/folder"`; empty when it has
/// none.
std::string UserDirectory(const std::string& name) {
    std::istringstream lines(ReadHostText(UserConfigFolder() + "/user-dirs.dirs"));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(name + "=\"") || line.back() != '"')
            continue;
        std::string value = line.substr(name.size() + 2);
        value.pop_back();
        return value.starts_with("$HOME") ? UserHome() + value.substr(5) : value;
    }
    return "";
}

std::string FindFolder(const std::string& name, const std::string& usual) {
    const std::string configured = UserDirectory(name);
    if (configured.starts_with('/') && IsFolder(configured))
        return configured;
    // A user without a desktop has its home folder in that place.
    return IsFolder(UserHome() + usual) ? UserHome() + usual : UserHome();
}

} // namespace

std::string GetSpecialFolderPath(int csidl) {
    std::string host;
    if (csidl == kCsidlDesktopDirectory)
        host = FindFolder("XDG_DESKTOP_DIR", "/Desktop");
    else if (csidl == kCsidlPersonal)
        host = FindFolder("XDG_DOCUMENTS_DIR", "/Documents");
    std::string path = PathFromHost(host);
    if (path.ends_with('\\'))
        path.pop_back();
    return path;
}

} // namespace platform
