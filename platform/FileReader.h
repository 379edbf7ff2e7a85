#pragma once

#include "base/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace platform {

/// A file that is open for reading at any position. Meanwhile other programs may read and write it.
class FileReader {
  public:
    virtual ~FileReader() = default;

    /// Length in bytes when the file was opened.
    virtual std::uint64_t Size() const = 0;

    /// Reads up to buffer.size() bytes from `offset`; returns how many were read, fewer only at the end of
    /// the file or after a read error.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) = 0;

    /// Whether the path that the file was opened by still leads to this very file, and nothing of the file
    /// has changed since. When another file has taken its place, that may be noticed up to 10 ms late.
    /// Returns false for a reader without a path.
    virtual bool IsUnchanged() const { return false; }

    /// Opens a file. Returns null and sets `error` on failure; a folder is refused with kErrorAccessDenied.
    static std::unique_ptr<FileReader> Open(const std::string& path, base::SystemError& error);
};

} // namespace platform
