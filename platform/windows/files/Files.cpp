#include "platform/Files.h"

#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

constexpr base::SystemError kNoSuchPath{base::kErrorPathNotFound};

} // namespace

std::optional<std::uint32_t> GetFileAttributes(const std::string& path) {
    const std::wstring host = WidePathOf(path);
    const DWORD attributes = host.empty() ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesW(host.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return std::nullopt;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return KnownAttributes(attributes);
    const std::optional<HostEntry> target = DescribeTarget(host);
    return target ? std::optional(target->attributes) : std::nullopt;
}

base::SystemError CreateFolder(const std::string& path) {
    const std::wstring host = WidePathOf(path);
    if (host.empty())
        return kNoSuchPath;
    return ::CreateDirectoryW(host.c_str(), nullptr) != 0 ? base::SystemError{} : LastError();
}

base::SystemError DeleteFile(const std::string& path) {
    const std::wstring host = WidePathOf(path);
    if (host.empty())
        return kNoSuchPath;
    const std::optional<HostEntry> entry = DescribeLink(host);
    if (!entry)
        return LastError();
    if (entry->IsLink() && entry->IsFolder())
        return ::RemoveDirectoryW(host.c_str()) != 0 ? base::SystemError{} : LastError();
    if (IsProtected(entry->attributes))
        return {base::kErrorAccessDenied};
    return ::DeleteFileW(host.c_str()) != 0 ? base::SystemError{} : LastError();
}

std::optional<std::string> ReadWholeFile(const std::string& path, std::uint64_t maxBytes,
                                         base::SystemError& error) {
    const std::wstring host = WidePathOf(path);
    error = kNoSuchPath;
    if (host.empty())
        return std::nullopt;
    const Handle file = OpenForReading(host, error);
    if (error)
        return std::nullopt;
    const std::uint64_t size = SizeOf(file);
    if (size > maxBytes) {
        error = {base::kErrorInvalidData};
        return std::nullopt;
    }
    std::string content(static_cast<std::size_t>(size), '\0');
    std::size_t count = 0;
    error = ReadFullyAt(file, 0, {reinterpret_cast<std::uint8_t*>(content.data()), content.size()}, count);
    if (error)
        return std::nullopt;
    content.resize(count);
    return content;
}

} // namespace platform
