#include "FileIdentity.h"

#include "Entry.h"
#include "WidePath.h"

namespace platform {

std::optional<FileIdentity> IdentityOf(const std::string& path, SystemError& error) {
    const std::wstring host = WidePathOf(path);
    error = {kErrorPathNotFound};
    if (host.empty())
        return std::nullopt;
    const std::optional<HostEntry> entry = DescribeTarget(host);
    error = entry ? SystemError{} : LastError();
    return entry ? std::optional(entry->identity) : std::nullopt;
}

} // namespace platform
