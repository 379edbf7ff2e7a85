#include "platform/Drives.h"

#include "base/PathComponents.h"
#include "platform/DriveSetting.h"
#include "platform/Files.h"
#include "platform/windows/Windows.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

/// The root that the system's drive calls take: they know no prefix.
std::wstring RootOf(char letter) {
    return {static_cast<wchar_t>(base::UpperDriveLetter(letter)), L':', L'\\'};
}

bool IsRoot(const std::string& root) {
    return root.size() >= 2 && root[1] == ':' && base::IsDriveLetter(root[0]);
}

} // namespace

DriveType GetDriveType(const std::string& root) {
    if (!IsRoot(root))
        return DriveType::kNoRoot;
    if (IsDriveTableSet()) {
        const DriveEntry* drive = FindSetDrive(root[0]);
        return drive != nullptr && FolderExists(root) ? drive->type : DriveType::kNoRoot;
    }
    return static_cast<DriveType>(::GetDriveTypeW(RootOf(root[0]).c_str()));
}

std::optional<DriveSpace> GetDriveSpace(const std::string& root) {
    if (!IsRoot(root) || WidePathOf(root).empty())
        return std::nullopt;
    const std::wstring host = IsDriveTableSet() ? WidePathOf(root) + L"\\" : RootOf(root[0]);
    DWORD sectors = 0;
    DWORD bytes = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    ULARGE_INTEGER free{};
    ULARGE_INTEGER total{};
    if (::GetDiskFreeSpaceW(host.c_str(), &sectors, &bytes, &freeClusters, &clusters) == 0 ||
        ::GetDiskFreeSpaceExW(host.c_str(), &free, &total, nullptr) == 0 || sectors == 0 || bytes == 0)
        return std::nullopt;
    // The first call caps the counts of a large drive; the second does not.
    const std::uint64_t cluster = std::uint64_t{sectors} * bytes;
    return DriveSpace{sectors, bytes, free.QuadPart / cluster, total.QuadPart / cluster};
}

} // namespace platform
