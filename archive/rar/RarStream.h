#pragma once

#include "archive/rar/PackedEntry.h"
#include "archive/rar/RarVolumes.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

struct archive;

namespace rar {

/// Hands entries to the library that unpacks them, one after another, as an archive of their own with nothing
/// else in it: one entry of format 4, any number of format 5. After a failure it can unpack no more. What
/// else the real archive holds, and how it is laid out over volumes, cannot lead the library astray so.
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
