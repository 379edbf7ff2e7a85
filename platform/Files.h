#pragma once

#include "base/SystemError.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace platform {

inline constexpr std::uint32_t kAttributeReadOnly = 0x01;
inline constexpr std::uint32_t kAttributeHidden = 0x02;
inline constexpr std::uint32_t kAttributeSystem = 0x04;
inline constexpr std::uint32_t kAttributeDirectory = 0x10;
inline constexpr std::uint32_t kAttributeArchive = 0x20;
inline constexpr std::uint32_t kAttributeNormal = 0x80;
inline constexpr std::uint32_t kAttributeReparsePoint = 0x400; ///< a link; only an enumeration tells

// All paths are this program's: a drive letter, a colon, backslashes, UTF-8. Names are found first exactly,
// then without regard to case.

/// Attributes of the file or folder at `path`, links followed; nothing when it cannot be read.
std::optional<std::uint32_t> GetFileAttributes(const std::string& path);

/// Whether a file, hidden and read-only ones included, exists at `path`. A folder is not a file.
bool FileExists(const std::string& path);

/// Whether a folder exists at `path`, with or without its last backslash.
bool FolderExists(const std::string& path);

/// Makes one folder; its parent must exist.
base::SystemError CreateFolder(const std::string& path);

/// Deletes one file, or a link itself.
base::SystemError DeleteFile(const std::string& path);

/// Copies a file; an existing target is replaced only once the copy is complete.
base::SystemError CopyFile(const std::string& from, const std::string& to);

/// Whole content of a file of at most `maxBytes`; nothing on failure, with `error` set.
std::optional<std::string> ReadWholeFile(const std::string& path, std::uint64_t maxBytes,
                                         base::SystemError& error);

/// Puts `content` at `path`; a file there is replaced only once the new one is complete and on the medium.
base::SystemError WriteWholeFile(const std::string& path, std::span<const char> content);

/// Creates `path` with `content`; fails with kErrorFileExists, changing nothing, when it is there already.
base::SystemError CreateNewFile(const std::string& path, std::span<const char> content);

/// The current folder, in this program's form.
std::string CurrentFolder();

} // namespace platform
