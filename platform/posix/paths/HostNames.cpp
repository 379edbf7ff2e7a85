#include "platform/posix/paths/HostNames.h"

#include "base/Utf8.h"
#include "platform/CodePageText.h"
#include "platform/posix/LocaleCodePage.h"

#include <algorithm>

namespace platform {

std::string JoinHostPath(const std::string& root, const std::vector<std::string>& components) {
    std::string path = root;
    for (const std::string& name : components) {
        if (path.back() != '/')
            path.push_back('/');
        path += name;
    }
    return path;
}

std::string ParentOf(const std::string& hostPath) {
    const std::size_t slash = hostPath.find_last_of('/');
    return slash == 0 || slash == std::string::npos ? "/" : hostPath.substr(0, slash);
}

std::string TextOfHostName(std::string_view name) {
    std::string text(name);
    if (base::AsciiPrefix(name) != name.size())
        text = LocaleCodePage() == kUtf8CodePage ? base::CleanedUtf8(name)
                                                 : LegacyToUtf8(LocaleCodePage(), name);
    std::replace(text.begin(), text.end(), '\\', '?');
    return text;
}

std::string HostNameOf(std::string_view text) {
    if (base::AsciiPrefix(text) == text.size() || LocaleCodePage() == kUtf8CodePage)
        return std::string(text);
    return Utf8ToLegacy(LocaleCodePage(), text);
}

} // namespace platform
