#pragma once

#include "archive/rar/PackedEntry.h"

#include <cstdint>
#include <vector>

namespace rar {

// These functions write an archive that holds nothing but what the unpacking library needs for some packed
// entries. It begins with ArchiveStart(). Each entry follows with EntryStart(), its packed data from the real
// archive, and EntryEnd(). `format` is 4 or 5, as in RarBlock.h.

/// The signature and the archive header.
std::vector<std::uint8_t> ArchiveStart(int format);

/// The header of an entry: sizes, checksum and packing of `entry`. Its name is a placeholder, since nobody
/// reads it.
std::vector<std::uint8_t> EntryStart(int format, const PackedEntry& entry);

/// Blocks to put behind the data of an entry. The library reads ahead there, and an end of the input at that
/// point would make it stop for good. Of a block that it does not know it skips the header alone, so these
/// blocks are nothing but headers.
std::vector<std::uint8_t> EntryEnd(int format);

} // namespace rar
