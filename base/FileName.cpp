#include "base/FileName.h"

#include <algorithm>

namespace base {
namespace {

constexpr std::size_t kDriveRootLength = 3;

bool IsAllowed(char character) {
    constexpr std::string_view kReserved = "\\/:*?\"<>|\x7F";
    return static_cast<unsigned char>(character) >= 0x20 &&
           kReserved.find(character) == std::string_view::npos;
}

} // namespace

bool IsFileName(std::string_view name) {
    return !name.empty() && name.back() != '.' && name.back() != ' ' && std::ranges::all_of(name, IsAllowed);
}

std::string_view LastComponent(std::string_view path) {
    return path.substr(path.rfind('\\') + 1);
}

std::string_view FolderOf(std::string_view path) {
    const std::size_t backslash = path.rfind('\\');
    if (backslash == std::string_view::npos)
        return {};
    return path.substr(0, backslash < kDriveRootLength ? backslash + 1 : backslash);
}

} // namespace base
