#pragma once

#include "base/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace platform {

/// Owns a file descriptor.
class HostFile {
  public:
    HostFile() = default;

    explicit HostFile(int descriptor) : descriptor_(descriptor) {}

    ~HostFile() { Close(); }

    HostFile(HostFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

    HostFile& operator=(HostFile&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    bool IsOpen() const { return descriptor_ >= 0; }

    int Descriptor() const { return descriptor_; }

    /// Closes the file now and returns the error, if any, that the system still had to report about writes.
    base::SystemError Close();

  private:
    int descriptor_ = -1;
};

/// Opens a regular file for reading and sets `status`. For anything else sets `error` and returns a file that
/// is not open.
HostFile OpenForReading(const std::string& hostPath, struct stat& status, base::SystemError& error);

/// The same for a file in, or some folders below, an open folder; `flags` may have O_NOFOLLOW.
HostFile OpenForReading(int folder, const std::string& name, int flags, struct stat& status,
                        base::SystemError& error);

/// Reads from the current position, or from `offset` where one is given, until `buffer` is full or the file
/// ends. `count` is set to the number of bytes read, also after a failure.
base::SystemError ReadFully(const HostFile& file, std::span<std::uint8_t> buffer, std::size_t& count);
base::SystemError ReadFullyAt(const HostFile& file, std::uint64_t offset, std::span<std::uint8_t> buffer,
                              std::size_t& count);

/// Writes all of `data` at the current position, or at `offset` where one is given.
base::SystemError WriteFully(const HostFile& file, std::span<const std::uint8_t> data);
base::SystemError WriteFullyAt(const HostFile& file, std::uint64_t offset,
                               std::span<const std::uint8_t> data);

/// Content of a small text file that the operating system or its settings provide; empty when it cannot be
/// read.
std::string ReadHostText(const std::string& hostPath);

} // namespace platform
