#pragma once

#include "archive/cabinet/CabCompress.h"
#include "archive/cabinet/PackSource.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cabinet {

/// A folder of the cabinet that will be made: some consecutive files.
struct PlannedFolder {
    std::size_t firstFile = 0;
    std::size_t fileCount = 0;
    std::uint64_t size = 0;

    std::size_t BlockCount() const;
};

/// The layout of a cabinet, which is decided before anything is written. Folders are kept small, so that they
/// can be read back side by side and a file at the end of a large cabinet is reached quickly.
struct PackPlan {
    std::vector<PackEntry> files;
    std::vector<PlannedFolder> folders;
    std::uint64_t size = 0;        ///< of all files
    std::uint64_t recordsSize = 0; ///< of everything before the data

    /// Lays out `found`.
    CabReport Make(std::vector<PackEntry> found);
};

/// What a cabinet stores of a file beside its name and its place.
struct StoredFields {
    std::uint16_t date = 0;
    std::uint16_t time = 0;
    std::uint16_t attributes = 0;
};

/// Date and time are local, to two seconds; moments that the format lacks become the nearest it has.
StoredFields StoredFieldsOf(const PackEntry& entry);

/// The bytes before the data. `dataOffsets` holds where the blocks of each folder begin, `cabinetSize` all
/// bytes.
std::vector<std::uint8_t> RecordsOf(const PackPlan& plan, const std::vector<std::uint32_t>& dataOffsets,
                                    std::uint32_t cabinetSize);

} // namespace cabinet
