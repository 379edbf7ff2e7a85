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

/// Reads the central directory of an archive. It is where the end record at the very end of the file says;
/// when there is no such record or its count is negative, a scan looks for it. As many entries are read as
/// the end record (or the scan) counted. The reading ends early at a header that the file cuts off, and at a
/// record that can only follow the directory.
///
/// Returns null when no directory was found; message IDS_UNKNOWN_RECORD was shown then.
std::shared_ptr<const ZipDirectory> ReadZipDirectory(platform::FileReader& file);

} // namespace zip
