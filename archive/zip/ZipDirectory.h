#pragma once

#include "archive/zip/ArchiveEntry.h"
#include "archive/zip/TextArena.h"
#include "platform/FileReader.h"

#include <memory>
#include <string>
#include <vector>

namespace zip {

/// A central directory as it was read: every entry whose header the file holds, in directory order.
struct ZipDirectory {
    std::vector<ArchiveEntry> entries;
    std::string comment; ///< of the archive, UTF-8
    TextArena texts;     ///< what the entries' texts point at
};

/// Reads the central directory of an archive: where the end record at the very end of the file says, or, when
/// there is none or its count is negative, where a scan finds it. As many entries are read as the end record
/// (the scan) counted; a header that the file cuts off, or one of the records that can only follow the
/// directory in its place, ends the reading early. Null when no directory was located; message
/// IDS_UNKNOWN_RECORD was shown then.
std::shared_ptr<const ZipDirectory> ReadZipDirectory(platform::FileReader& file);

} // namespace zip
