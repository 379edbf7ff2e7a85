#pragma once

#include "platform/Times.h"

#include <cstdint>

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

} // namespace platform
