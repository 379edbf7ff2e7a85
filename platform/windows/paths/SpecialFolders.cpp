#include "platform/SpecialFolders.h"

#include "platform/HostPath.h"
#include "platform/windows/Wide.h"
#include "platform/windows/Windows.h"

#include <array>
#include <shlobj.h>

namespace platform {

std::string GetSpecialFolderPath(int csidl) {
    std::array<wchar_t, MAX_PATH> folder{};
    if (::SHGetFolderPathW(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, folder.data()) != S_OK)
        return "";
    std::string path = PathFromHost(Utf8OfWide(folder.data()));
    if (path.ends_with('\\'))
        path.pop_back();
    return path;
}

} // namespace platform
