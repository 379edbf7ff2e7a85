#pragma once

#include "platform/SystemError.h"
#include "platform/Times.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// Tells one state of one file from every other: what is kept of a file is good for as long as this is the
/// same.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;
    std::uint64_t size = 0;
    FileTime lastWrite;
    FileTime lastChange; ///< of its content or its attributes
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Identity of the file at `path`; nothing, with `error` set, when it cannot be asked.
std::optional<FileIdentity> IdentityOf(const std::string& path, SystemError& error);

} // namespace platform
