#pragma once

#include "platform/FileIdentity.h"
#include "platform/windows/files/Handle.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// What the system knows of a file or folder.
struct HostEntry {
    FileIdentity identity;
    std::uint32_t attributes = 0; ///< kAttribute... bits (Files.h); kAttributeReparsePoint only for a link

    bool IsFolder() const;
    bool IsLink() const;

    /// Whether both are the same file, whatever has become of its content.
    bool IsSameFile(const HostEntry& other) const {
        return identity.volume == other.identity.volume && identity.file == other.identity.file;
    }
};

/// Whether attributes and reparse tag of an entry are those of a link: a symbolic link or a junction. Other
/// reparse points, such as a file that a cloud service has yet to bring, are files and folders.
bool IsLinkTag(DWORD attributes, DWORD tag);

/// Describes an open file or folder.
std::optional<HostEntry> DescribeHandle(const Handle& file);

/// Describes what stands at a path: the link itself, or what it leads to.
std::optional<HostEntry> DescribeLink(const std::wstring& path);
std::optional<HostEntry> DescribeTarget(const std::wstring& path);

/// The attribute bits that the program knows.
std::uint32_t KnownAttributes(DWORD attributes);

/// Whether what has these attributes may neither be replaced nor deleted as a file: a folder, or a read-only
/// file.
bool IsProtected(std::uint32_t attributes);

} // namespace platform
