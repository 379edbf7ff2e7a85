#pragma once

#include "archive/rar/RarStream.h"
#include "archive/rar/RarWalk.h"

#include <deque>
#include <memory>
#include <vector>

namespace rar {

/// Unpacks the entries of an archive, in archive order and each at most once. An entry that is not asked for
/// is not unpacked, unless a solid entry behind it needs it.
class RarUnpacker {
  public:
    explicit RarUnpacker(RarVolumes& volumes) : volumes_(volumes) {}

    /// Tells that the walk through an archive of `format` has come to this entry.
    void Meet(int format, const Entry& entry);

    /// Passes the content of the last entry to `sink` and returns a result code. Success means that all bytes
    /// came and that their checksum is right.
    int Unpack(const Sink& sink);

  private:
    int CopyStored(const PackedEntry& entry, const Sink& sink);
    int UnpackRun(const Sink& sink);

    RarVolumes& volumes_;
    int format_ = 0;
    PackedEntry current_;
    std::deque<PackedEntry>
        run_; // of the solid run of current_, what the stream has not unpacked; it is last
    std::unique_ptr<RarStream> stream_;
    bool isBroken_ = false;
};

} // namespace rar
