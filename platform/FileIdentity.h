#pragma once

#include "platform/Times.h"

#include <cstdint>

namespace platform {

/// Identifies a file and the state that it is in. What the program remembers of a file stays true for as long
/// as the identity of the file compares equal.
struct FileIdentity {
    std::uint64_t volume = 0; ///< number of the file system that holds the file
    std::uint64_t file = 0;   ///< number of the file in that file system
    std::uint64_t size = 0;   ///< in bytes
    FileTime lastWrite;       ///< last change of its content
    FileTime lastChange;      ///< last change of its content or its attributes
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

} // namespace platform
