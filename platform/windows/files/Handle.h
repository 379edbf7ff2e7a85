#pragma once

#include "base/SystemError.h"
#include "platform/Times.h"
#include "platform/windows/Windows.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace platform {

/// Why the last call to the system on this thread failed, in the numbers of SystemError.h.
base::SystemError LastError();

/// Owns a file handle.
class Handle {
  public:
    Handle() = default;

    explicit Handle(HANDLE handle) : handle_(handle) {}

    ~Handle() { Close(); }

    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}

    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

    HANDLE Get() const { return handle_; }

    void Close();

  private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens an existing file for reading. Other programs may go on using it.
Handle OpenForReading(const std::wstring& path, base::SystemError& error);

/// Opens a file, a folder or (with FILE_FLAG_OPEN_REPARSE_POINT) a link itself, only to ask about it.
Handle OpenToAsk(const std::wstring& path, DWORD flags = 0);

/// Size of an open file in bytes; 0 when it cannot be asked.
std::uint64_t SizeOf(const Handle& file);

/// Reads from `offset` until `buffer` is full or the file ends. `count` is set to the number of bytes read,
/// also after a failure.
base::SystemError ReadFullyAt(const Handle& file, std::uint64_t offset, std::span<std::uint8_t> buffer,
                              std::size_t& count);

/// Writes all of `data` at the current position, or at `offset` where one is given.
base::SystemError WriteFully(const Handle& file, std::span<const std::uint8_t> data);
base::SystemError WriteFullyAt(const Handle& file, std::uint64_t offset, std::span<const std::uint8_t> data);

inline FileTime FileTimeFromHost(const FILETIME& time) {
    return {static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime};
}

inline FILETIME HostTimeOf(FileTime time) {
    return {static_cast<DWORD>(time.ticks), static_cast<DWORD>(time.ticks >> 32)};
}

} // namespace platform
