#pragma once

#include "base/SystemError.h"
#include "platform/FileReader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cabinet {

/// A run of data blocks that are decoded together, one after another.
struct Folder {
    std::uint32_t dataOffset = 0;
    std::uint16_t blockCount = 0; ///< in this cabinet
    std::uint16_t method = 0;     ///< with its window size

    /// Decoded bytes that the blocks can hold at most.
    std::uint64_t Capacity() const;
};

/// A file of a cabinet.
struct Entry {
    std::string name; ///< UTF-8
    std::uint32_t size = 0;
    std::uint32_t offset = 0; ///< in its decoded folder
    std::uint16_t folder = 0;
    std::uint16_t date = 0;
    std::uint16_t time = 0;
    std::uint16_t attributes = 0;
    bool continuedFromPrevious = false;
    bool continuesInNext = false;
};

/// What a cabinet says of itself before its data, all of it checked against the bounds of the file.
class CabinetDirectory {
  public:
    /// Reads it from a file that is to begin with a cabinet. Fails with kErrorInvalidData when there is none,
    /// when a record is cut off, when a file names a folder that is not there, or when a name is empty or has
    /// no end; kErrorReadFault when the medium fails.
    base::SystemError Read(platform::FileReader& file);

    const std::vector<Folder>& Folders() const { return folders_; }

    const std::vector<Entry>& Entries() const { return entries_; }

    std::size_t DataReserve() const { return dataReserve_; } ///< bytes behind each data block's header

    bool HasNext() const { return hasNext_; }

    const std::string& NextCabinet() const { return nextCabinet_; }

    const std::string& NextDisk() const { return nextDisk_; }

    std::uint16_t SetId() const { return setId_; }

    std::uint16_t CabinetNumber() const { return cabinetNumber_; }

    /// Positions of the entries of this name, in any letter case, in cabinet order.
    std::vector<std::size_t> Find(std::string_view name) const;

    /// Bytes of memory, roughly.
    std::size_t Memory() const { return memory_; }

  private:
    class Reader;

    void MakeIndex();

    std::vector<Folder> folders_;
    std::vector<Entry> entries_;

    /// Of one entry in a chain of entries with similar hashes.
    struct Link {
        std::size_t hash = 0;   ///< of the name in upper case
        std::uint32_t next = 0; ///< position of the next entry in cabinet order, and 1; 0 at the end
    };

    std::vector<std::uint32_t> firstLinks_; ///< by the hash's last bits; as Link::next
    std::vector<Link> links_;               ///< by entry
    std::size_t dataReserve_ = 0;
    bool hasNext_ = false;
    std::string nextCabinet_;
    std::string nextDisk_;
    std::uint16_t setId_ = 0;
    std::uint16_t cabinetNumber_ = 0;
    std::size_t memory_ = 0;
};

} // namespace cabinet
