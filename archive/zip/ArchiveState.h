#pragma once

#include "archive/codec/ByteBuffer.h"

#include <cstdint>
#include <string>

namespace zip {

/// State of the one ZIP archive that is loaded in the process; filled by the reader, read by the front.
struct ArchiveState {
    std::uint8_t ArchiveLoaded = 0; ///< 1 once a central directory has been located
    std::int32_t ArchiveFileCount = 0;
    std::string ArchivePath;
    std::string ArchiveComment;
    codec::ByteBuffer UnpackBuffer; ///< the entry in hand: stored bytes, then decoded bytes
    std::string PathSeparator;      ///< "\" or "/", decided once
};

ArchiveState& State();

} // namespace zip
