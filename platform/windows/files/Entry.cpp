#include "platform/windows/files/Entry.h"

#include "platform/Files.h"

namespace platform {
namespace {

constexpr DWORD kKnown = kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeDirectory |
                         kAttributeArchive | kAttributeNormal;

} // namespace

bool HostEntry::IsFolder() const {
    return (attributes & kAttributeDirectory) != 0;
}

bool HostEntry::IsLink() const {
    return (attributes & kAttributeReparsePoint) != 0;
}

bool IsLinkTag(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT);
}

std::uint32_t KnownAttributes(DWORD attributes) {
    return attributes & kKnown;
}

bool IsProtected(std::uint32_t attributes) {
    return (attributes & (kAttributeDirectory | kAttributeReadOnly)) != 0;
}

std::optional<HostEntry> DescribeHandle(const Handle& file) {
    BY_HANDLE_FILE_INFORMATION information{};
    if (!file.IsOpen() || ::GetFileInformationByHandle(file.Get(), &information) == 0)
        return std::nullopt;
    HostEntry entry;
    entry.attributes = KnownAttributes(information.dwFileAttributes);
    FILE_ATTRIBUTE_TAG_INFO tag{};
    if ((information.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
        ::GetFileInformationByHandleEx(file.Get(), FileAttributeTagInfo, &tag, sizeof tag) != 0 &&
        IsLinkTag(information.dwFileAttributes, tag.ReparseTag))
        entry.attributes |= kAttributeReparsePoint;
    FileIdentity& identity = entry.identity;
    identity.volume = information.dwVolumeSerialNumber;
    identity.file = static_cast<std::uint64_t>(information.nFileIndexHigh) << 32 | information.nFileIndexLow;
    identity.size = static_cast<std::uint64_t>(information.nFileSizeHigh) << 32 | information.nFileSizeLow;
    identity.lastWrite = FileTimeFromHost(information.ftLastWriteTime);
    FILE_BASIC_INFO basic{};
    if (::GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &basic, sizeof basic) != 0)
        identity.lastChange = {static_cast<std::uint64_t>(basic.ChangeTime.QuadPart)};
    return entry;
}

std::optional<HostEntry> DescribeLink(const std::wstring& path) {
    return DescribeHandle(OpenToAsk(path, FILE_FLAG_OPEN_REPARSE_POINT));
}

std::optional<HostEntry> DescribeTarget(const std::wstring& path) {
    return DescribeHandle(OpenToAsk(path));
}

} // namespace platform
