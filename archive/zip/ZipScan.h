#pragma once

#include "archive/zip/ArchiveBytes.h"

#include <cstdint>
#include <optional>

namespace zip {

/// What a walk over the local headers from the start of an archive found.
struct ScannedDirectory {
    std::uint64_t offset = 0;  ///< of the first central header
    std::uint32_t entries = 0; ///< local headers in front of it
};

/// Looks for the central directory from the start of the file, for archives whose end record is not found at
/// its simplest place or cannot be trusted. Local headers are skipped with the data that they announce, data
/// descriptors with their 12 bytes; any other four bytes are reported (message IDS_UNKNOWN_RECORD). Nothing
/// is found when the file ends first, or at a local header whose size is negative or leads past the end of
/// the file; at least one report precedes that.
std::optional<ScannedDirectory> ScanForDirectory(ArchiveBytes& file);

} // namespace zip
