#include "platform/posix/paths/UserFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace platform {
namespace {

std::string FolderOf(const char* variable) {
    const char* value = std::getenv(variable);
    // The base-directory specification has relative paths ignored.
    if (value == nullptr || *value != '/')
        return "";
    std::string path = value;
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string FolderOrBelowHome(const char* variable, const char* belowHome) {
    const std::string set = FolderOf(variable);
    if (!set.empty())
        return set;
    const std::string home = UserHome();
    return home.empty() ? "" : home + belowHome;
}

} // namespace

std::string UserHome() {
    const std::string home = FolderOf("HOME");
    if (!home.empty())
        return home;
    const passwd* user = getpwuid(geteuid());
    return user == nullptr || user->pw_dir == nullptr ? "" : user->pw_dir;
}

std::string UserCacheFolder() {
    return FolderOrBelowHome("XDG_CACHE_HOME", "/.cache");
}

std::string UserConfigFolder() {
    return FolderOrBelowHome("XDG_CONFIG_HOME", "/.config");
}

std::string UserRuntimeFolder() {
    return FolderOf("XDG_RUNTIME_DIR");
}

} // namespace platform
