#pragma once

#include "archive/codec/Crc32.h"
#include "archive/rar/RarBlock.h"
#include "archive/rar/RarLibrary.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace rar {

/// A run of an entry's packed bytes.
struct Piece {
    std::size_t volume = 0;
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

/// What it takes to unpack one entry.
struct PackedEntry {
    Packing packing;
    std::uint64_t size = 0;
    std::vector<Piece> pieces;

    std::uint64_t PackedSize() const;
};

/// Takes a piece of an entry's content; answers a result code, any but success ends the unpacking with it.
using Sink = std::function<int(Bytes)>;

/// Gives content to a sink and sees to it that it has the declared size and checksum, and never more.
class CheckedOutput {
  public:
    CheckedOutput(const PackedEntry& entry, const Sink& sink) : entry_(entry), sink_(sink) {}

    std::uint64_t Done() const { return done_; }

    int Put(Bytes bytes);

    /// The result when all has come.
    int Finish() const;

  private:
    const PackedEntry& entry_;
    const Sink& sink_;
    std::uint64_t done_ = 0;
    codec::Cls_CRC32 crc_;
};

} // namespace rar
