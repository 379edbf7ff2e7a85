#pragma once

#include "base/WorkObserver.h"
#include "platform/Times.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zip {

/// Statuses of the archive operations.
inline constexpr std::int16_t kStatusDone = 0;
inline constexpr std::int16_t kStatusRefused = -1; ///< password refused or not given; damaged stream; stopped
inline constexpr std::int16_t kStatusNotZip = -2;  ///< the file is not a ZIP archive
inline constexpr std::int16_t kStatusNothing = -10; ///< nothing loaded, wrong selection, refused method

/// Which entries to extract: positions 1 to FileCount; position 0 is not used.
using EntrySelection = std::vector<bool>;

/// The reader of one archive format, as the archive front uses it. Entries are numbered from 1. For a number
/// outside 1..FileCount every member returns the empty value: "", 0, false or kZeroDate.
class ArchiveReader {
  public:
    virtual ~ArchiveReader() = default;

    /// Reads the directory of the archive `fileName` and makes it the loaded archive. Returns kStatusDone
    /// also when none was found; FileCount is then 0.
    virtual std::int16_t Get_Contents(const std::string& fileName) = 0;
    /// Extracts the selected entries of the loaded archive into `folder`. Returns one of the statuses
    /// above. The observer, which may be null, is called after each entry, selected or not, and within large
    /// ones, with their sizes; it can stop the extraction after an entry.
    virtual std::int16_t UnPack(const EntrySelection& selection, const std::string& folder,
                                base::WorkObserver* observer) = 0;
    /// Packing is not offered: does nothing and returns kStatusDone.
    virtual std::int16_t Pack() = 0;
    /// Whether the reader can extract entries.
    virtual bool CanUnpack() const = 0;
    /// Number of entries of the loaded archive, folders included; 0 when none is loaded.
    virtual std::int32_t FileCount() const = 0;
    /// Name of the entry as stored, with its folders, in UTF-8.
    virtual std::string FileName(std::int32_t entry) const = 0;
    /// Comment of the entry, in UTF-8.
    virtual std::string CommentsFile(std::int32_t entry) const = 0;
    /// Comment of the archive, in UTF-8.
    virtual std::string CommentsPack() const = 0;
    /// Whether the entry is a folder.
    virtual bool IsDir(std::int32_t entry) const = 0;
    /// Name of the compression method, such as "Deflated".
    virtual std::string Method(std::int32_t entry) const = 0;
    /// CRC-32 of the unpacked bytes as the archive records it; the bits of an unsigned number.
    virtual std::int32_t CRC32(std::int32_t entry) const = 0;
    /// Stored size in bytes, the encryption header included.
    virtual std::int32_t Compressed_Size(std::int32_t entry) const = 0;
    /// Size in bytes when unpacked.
    virtual std::int32_t UnCompressed_Size(std::int32_t entry) const = 0;
    /// Whether the entry needs a password.
    virtual bool Encrypted(std::int32_t entry) const = 0;
    /// Date and time of the entry's last change, local time.
    virtual platform::SystemTime FileDateTime(std::int32_t entry) const = 0;
    /// Name of the system that the entry was made on.
    virtual std::string SystemMadeBy(std::int32_t entry) const = 0;
    /// Version of the format that the entry was made by, such as "2.0".
    virtual std::string VersionMadeBy(std::int32_t entry) const = 0;
    /// Name of the system that is needed to extract the entry.
    virtual std::string SystemNeeded(std::int32_t entry) const = 0;
    /// Version of the format that is needed to extract the entry, such as "2.0".
    virtual std::string VersionNeeded(std::int32_t entry) const = 0;
};

/// The date that FileDateTime returns when there is no such entry.
inline constexpr platform::SystemTime kZeroDate{1899, 12, 30, 0, 0, 0};

} // namespace zip
