#pragma once

#include "archive/rar/PackedEntry.h"
#include "archive/rar/RarVolumes.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

struct archive;

namespace rar {

/// Gives entries to the library that unpacks them, one after another, as an archive of their own that holds
/// nothing else: one entry of format 4, or any number of entries of format 5. The library therefore never
/// sees the rest of the real archive, nor how it is divided into volumes, and cannot be misled by it. After a
/// failure it cannot unpack anything more.
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

} // namespace rar
