#include "platform/Files.h"

#include "platform/windows/files/Entry.h"
#include "platform/windows/files/TemporaryFile.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

constexpr base::SystemError kNoSuchPath{base::kErrorPathNotFound};

std::span<const std::uint8_t> BytesOf(std::span<const char> content) {
    return {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()};
}

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

base::SystemError WriteWholeFile(const std::string& path, std::span<const char> content) {
    const std::wstring host = WidePathOf(path);
    if (host.empty())
        return kNoSuchPath;
    TemporaryFile file = TemporaryFile::StartFor(host);
    if (file.Error())
        return file.Error();
    if (const base::SystemError error = WriteFully(file.File(), BytesOf(content)))
        return error;
    return file.Commit(host, Durability::kOnMedium);
}

base::SystemError CreateNewFile(const std::string& path, std::span<const char> content) {
    const std::wstring host = WidePathOf(path);
    if (host.empty())
        return kNoSuchPath;
    Handle file(::CreateFileW(host.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen())
        return LastError();
    base::SystemError error = WriteFully(file, BytesOf(content));
    if (!error && ::FlushFileBuffers(file.Get()) == 0)
        error = LastError();
    if (error)
        DeleteOpenFile(file);
    return error;
}

base::SystemError CopyFile(const std::string& from, const std::string& to) {
    const std::wstring source = WidePathOf(from);
    const std::wstring target = WidePathOf(to);
    if (source.empty() || target.empty())
        return kNoSuchPath;
    base::SystemError error;
    const Handle file = OpenForReading(source, error);
    if (error)
        return error;
    const std::optional<HostEntry> there = DescribeTarget(target);
    const std::optional<HostEntry> here = DescribeHandle(file);
    if (there && here && there->IsSameFile(*here))
        return {base::kErrorSharingViolation};
    TemporaryFile copy = TemporaryFile::StartFor(target);
    if (copy.Error())
        return copy.Error();
    const auto goOn = [](std::uint64_t) { return true; };
    if ((error = CopyContent(file, copy.File(), goOn).error))
        return error;
    // The copy is as old as its source, but always the user's own to change: a copy from a write-protected
    // medium must not be protected itself.
    KeepTimes(file, copy.File());
    return copy.Commit(target, Durability::kOnMedium);
}

} // namespace platform
