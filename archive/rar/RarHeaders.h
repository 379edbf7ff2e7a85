#pragma once

#include "archive/rar/PackedEntry.h"

#include <cstdint>
#include <vector>

namespace rar {

// An archive with only what it takes to unpack some entries: the start, and for each entry its own start, its
// data and its end.

std::vector<std::uint8_t> ArchiveStart(int format);

/// The header of an entry of any name.
std::vector<std::uint8_t> EntryStart(int format, const PackedEntry& entry);

/// What a reader finds that looks ahead behind the data: blocks that it passes over. They hold nothing,
/// because it passes over no more than their fields.
std::vector<std::uint8_t> EntryEnd(int format);

} // namespace rar
