#pragma once

#include "RarVolumes.h"
#include "RarWalk.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

struct archive;

namespace platform::rar {

/// Takes a piece of an entry's content; answers a result code, any but success ends the unpacking with it.
using Sink = std::function<int(Bytes)>;

/// What it takes to unpack one entry.
struct PackedEntry {
    Packing packing;
    std::uint64_t size = 0;
    std::vector<Piece> pieces;
};

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
    std::uint32_t crc_ = 0;
};

/// Hands entries to the library that unpacks them: one, or those of a solid run one after another, as an
/// archive of their own with nothing else in it. What else the real archive holds, and how it is laid out
/// over volumes, cannot lead the library astray so.
class RarStream {
  public:
    RarStream(int format, RarVolumes& volumes);

    int Unpack(const PackedEntry& entry, const Sink& sink);

  private:
    /// What the library is to read next: bytes, or where they are.
    struct Source {
        std::vector<std::uint8_t> bytes;
        Piece piece;
    };

    void Begin(const PackedEntry& entry);
    bool Open();
    bool FindEntry();
    int Drain(const PackedEntry& entry, const Sink& sink);
    std::ptrdiff_t Read(const void*& bytes);
    static std::ptrdiff_t ReadCallback(archive*, void* self, const void** bytes);

    int format_;
    RarVolumes& volumes_;
    std::deque<Source> sources_;
    std::vector<std::uint8_t> buffer_;
    bool isOpen_ = false;
    bool isFaulted_ = false;
    std::unique_ptr<archive, int (*)(archive*)> archive_; // last: it may read until it goes
};

} // namespace platform::rar
