#include "platform/Files.h"

namespace platform {

bool FileExists(const std::string& path) {
    const std::optional<std::uint32_t> attributes = GetFileAttributes(path);
    return attributes && (*attributes & kAttributeDirectory) == 0;
}

bool FolderExists(const std::string& path) {
    const std::optional<std::uint32_t> attributes = GetFileAttributes(path);
    return attributes && (*attributes & kAttributeDirectory) != 0;
}

} // namespace platform
