#include "platform/windows/files/Handle.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::size_t kMostAtOnce = 1U << 30;

OVERLAPPED PositionOf(std::uint64_t offset) {
    OVERLAPPED position{};
    position.Offset = static_cast<DWORD>(offset);
    position.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return position;
}

DWORD Portion(std::size_t size) {
    return static_cast<DWORD>(std::min(size, kMostAtOnce));
}

} // namespace

base::SystemError LastError() {
    switch (const DWORD code = ::GetLastError()) {
    case ERROR_HANDLE_DISK_FULL:
        return {base::kErrorDiskFull};
    case ERROR_LOCK_VIOLATION:
        return {base::kErrorSharingViolation};
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return {base::kErrorPathNotFound};
    case ERROR_FILENAME_EXCED_RANGE:
        return {base::kErrorNameTooLong};
    default:
        return {code == ERROR_SUCCESS ? base::kErrorGeneralFailure : code};
    }
}

void Handle::Close() {
    if (IsOpen())
        ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
}

Handle OpenForReading(const std::wstring& path, base::SystemError& error) {
    Handle file(::CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    error = file.IsOpen() ? base::SystemError{} : LastError();
    return file;
}

Handle OpenToAsk(const std::wstring& path, DWORD flags) {
    return Handle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

std::uint64_t SizeOf(const Handle& file) {
    LARGE_INTEGER size{};
    return ::GetFileSizeEx(file.Get(), &size) != 0 ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

base::SystemError ReadFullyAt(const Handle& file, std::uint64_t offset, std::span<std::uint8_t> buffer,
                              std::size_t& count) {
    count = 0;
    while (count < buffer.size()) {
        OVERLAPPED position = PositionOf(offset + count);
        DWORD read = 0;
        if (::ReadFile(file.Get(), buffer.data() + count, Portion(buffer.size() - count), &read, &position) ==
            0)
            return ::GetLastError() == ERROR_HANDLE_EOF ? base::SystemError{} : LastError();
        if (read == 0)
            break;
        count += read;
    }
    return {};
}

base::SystemError WriteFully(const Handle& file, std::span<const std::uint8_t> data) {
    while (!data.empty()) {
        DWORD written = 0;
        if (::WriteFile(file.Get(), data.data(), Portion(data.size()), &written, nullptr) == 0)
            return LastError();
        if (written == 0)
            return {base::kErrorDiskFull};
        data = data.subspan(written);
    }
    return {};
}

base::SystemError WriteFullyAt(const Handle& file, std::uint64_t offset, std::span<const std::uint8_t> data) {
    while (!data.empty()) {
        OVERLAPPED position = PositionOf(offset);
        DWORD written = 0;
        if (::WriteFile(file.Get(), data.data(), Portion(data.size()), &written, &position) == 0)
            return LastError();
        if (written == 0)
            return {base::kErrorDiskFull};
        data = data.subspan(written);
        offset += written;
    }
    return {};
}

} // namespace platform
