#include "base/PathComponents.h"

#include <algorithm>

namespace base {

bool IsDriveLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

char UpperDriveLetter(char c) {
    return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::vector<std::string> SplitComponents(std::string_view path, std::string_view separators) {
    std::vector<std::string> components;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(separators), path.size());
        const std::string_view name = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (name.empty() || name == ".")
            continue;
        if (name != "..")
            components.emplace_back(name);
        else if (!components.empty())
            components.pop_back();
    }
    return components;
}

} // namespace base
