#pragma once

#include <cstdint>
#include <string>

namespace base {

/// Why a call to the operating system failed, in the system error numbers that the program's own tables use.
/// A default-constructed value means success.
struct SystemError {
    std::uint32_t code = 0;

    /// True when something failed.
    explicit operator bool() const { return code != 0; }

    /// The system's description of `code` as one English sentence in UTF-8; never empty for a failure.
    std::string Description() const;

    friend bool operator==(const SystemError&, const SystemError&) = default;
};

inline constexpr std::uint32_t kErrorFileNotFound = 2;
inline constexpr std::uint32_t kErrorPathNotFound = 3;
inline constexpr std::uint32_t kErrorTooManyOpenFiles = 4;
inline constexpr std::uint32_t kErrorAccessDenied = 5;
inline constexpr std::uint32_t kErrorNotEnoughMemory = 8;
inline constexpr std::uint32_t kErrorInvalidData = 13;
inline constexpr std::uint32_t kErrorNotSameDevice = 17;
inline constexpr std::uint32_t kErrorWriteProtect = 19;
inline constexpr std::uint32_t kErrorNotReady = 21;
inline constexpr std::uint32_t kErrorCrc = 23;
inline constexpr std::uint32_t kErrorWriteFault = 29;
inline constexpr std::uint32_t kErrorReadFault = 30;
inline constexpr std::uint32_t kErrorGeneralFailure = 31;
inline constexpr std::uint32_t kErrorSharingViolation = 32;
inline constexpr std::uint32_t kErrorFileExists = 80;
inline constexpr std::uint32_t kErrorDiskFull = 112;
inline constexpr std::uint32_t kErrorInvalidName = 123;
inline constexpr std::uint32_t kErrorFolderNotEmpty = 145;
inline constexpr std::uint32_t kErrorBadPathName = 161;
inline constexpr std::uint32_t kErrorAlreadyExists = 183;
inline constexpr std::uint32_t kErrorBadExeFormat = 193;
inline constexpr std::uint32_t kErrorNameTooLong = 206;
inline constexpr std::uint32_t kErrorFileTooLarge = 223;
inline constexpr std::uint32_t kErrorFolderInvalid = 267;

} // namespace base
