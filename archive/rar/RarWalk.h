#pragma once

#include "archive/rar/PackedEntry.h"
#include "archive/rar/RarBlock.h"
#include "archive/rar/RarLibrary.h"
#include "archive/rar/RarVolumes.h"
#include "platform/BufferedInput.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace rar {

/// An entry with the place of its data in all volumes.
struct Entry {
    EntryHeader header;
    std::string archive; ///< path of the volume that it begins in
    std::vector<Piece> pieces;
    /// Why its data cannot be had whole: kRarBadData (cut off), kRarCannotOpen (a volume is missing).
    int obstacle = kRarSuccess;
};

/// Goes through the blocks of an archive from entry to entry, over all its volumes. Every field is checked
/// against the bytes that are really there before it is used.
class RarWalk {
  public:
    /// `volumes` outlives this. With `endIsOptional`, an archive of format 4 may end without an end block, as
    /// the oldest packers left it.
    RarWalk(RarVolumes& volumes, bool endIsOptional) : volumes_(volumes), endIsOptional_(endIsOptional) {}

    /// Reads the beginning of the first volume. Returns a result code.
    int Open();

    /// 4 or 5.
    int Format() const { return format_; }

    /// Goes on to the next entry. Returns a result code. After a failure it does not move on.
    int Next(Entry& entry);

  private:
    int EnterVolume(std::size_t number);
    int ReadBlock(Block& block);
    int FindEntry(Block& block);
    void AddPiece(Entry& entry, const Block& block) const;
    void Follow(Entry& entry);

    RarVolumes& volumes_;
    bool endIsOptional_;
    int format_ = 0;
    std::size_t number_ = 0; // of the volume
    std::shared_ptr<platform::FileReader> file_;
    std::optional<platform::BufferedInput> input_;
    std::vector<std::uint8_t> header_;
    std::uint64_t dataStart_ = 0; // of the block read last
    int ended_ = kRarSuccess;
};

} // namespace rar
