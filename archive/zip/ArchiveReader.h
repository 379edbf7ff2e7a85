#pragma once

#include "archive/output/ExtractionObserver.h"
#include "platform/Times.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zip {

/// Statuses of the archive operations.
inline constexpr std::int16_t kStatusDone = 0;
inline constexpr std::int16_t kStatusRefused = -1; ///< password refused or not given; damaged stream; stopped
inline constexpr std::int16_t kStatusNotZip = -2;
inline constexpr std::int16_t kStatusNothing = -10; ///< nothing loaded, wrong selection, refused method

/// Which entries to extract: positions 1 to FileCount; position 0 is not used.
using EntrySelection = std::vector<bool>;

/// What the archive front asks of the reader of one format. Entries are numbered from 1; a number outside
/// 1..FileCount gives the empty value ("", 0, false, the zero date).
class ArchiveReader {
  public:
    virtual ~ArchiveReader() = default;

    virtual std::int16_t Get_Contents(const std::string& fileName) = 0;
    virtual std::int16_t UnPack(const EntrySelection& selection, const std::string& folder,
                                output::ExtractionObserver* observer) = 0;
    virtual std::int16_t Pack() = 0;
    virtual bool CanUnpack() const = 0;
    virtual std::int32_t FileCount() const = 0;
    virtual std::string FileName(std::int32_t entry) const = 0;
    virtual std::string CommentsFile(std::int32_t entry) const = 0;
    virtual std::string CommentsPack() const = 0;
    virtual bool IsDir(std::int32_t entry) const = 0;
    virtual std::string Method(std::int32_t entry) const = 0;
    virtual std::int32_t CRC32(std::int32_t entry) const = 0;
    virtual std::int32_t Compressed_Size(std::int32_t entry) const = 0;
    virtual std::int32_t UnCompressed_Size(std::int32_t entry) const = 0;
    virtual bool Encrypted(std::int32_t entry) const = 0;
    virtual platform::SystemTime FileDateTime(std::int32_t entry) const = 0;
    virtual std::string SystemMadeBy(std::int32_t entry) const = 0;
    virtual std::string VersionMadeBy(std::int32_t entry) const = 0;
    virtual std::string SystemNeeded(std::int32_t entry) const = 0;
    virtual std::string VersionNeeded(std::int32_t entry) const = 0;
};

/// The zero date: what entry members answer when there is no entry.
inline constexpr platform::SystemTime kZeroDate{1899, 12, 30, 0, 0, 0};

} // namespace zip
