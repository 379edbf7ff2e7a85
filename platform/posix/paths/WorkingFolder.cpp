#include "platform/posix/paths/WorkingFolder.h"

#include "base/Letters.h"
#include "platform/posix/paths/DriveTable.h"
#include "platform/posix/paths/UserFolders.h"

namespace platform {
namespace {

constexpr std::string_view kName = "Pellarion";

} // namespace

std::string WorkingFolderRoot() {
    if (IsDriveTableSet())
        return "";
    const std::string cache = UserCacheFolder();
    return cache.empty() ? "" : cache + "/pellarion";
}

std::string WorkingFolderPath() {
    return "C:\\" + std::string(kName);
}

bool IsWorkingFolderName(std::string_view name) {
    return base::EqualsNoCase(name, kName);
}

bool HoldsWorkingFolder(const std::string& hostFolder) {
    const DriveEntry* drive = FindDrive('C');
    return drive != nullptr && drive->root == hostFolder && !WorkingFolderRoot().empty();
}

} // namespace platform
