#include "archive/rar/PackedEntry.h"

#include <numeric>
#include <zlib.h>

namespace rar {

std::uint64_t PackedEntry::PackedSize() const {
    return std::accumulate(pieces.begin(), pieces.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const Piece& piece) { return sum + piece.length; });
}

int CheckedOutput::Put(Bytes bytes) {
    if (bytes.size() > entry_.size - done_)
        return kRarBadData;
    done_ += bytes.size();
    if (entry_.packing.crc)
        crc_ = static_cast<std::uint32_t>(::crc32_z(crc_, bytes.data(), bytes.size()));
    return sink_(bytes);
}

int CheckedOutput::Finish() const {
    const bool isWhole = done_ == entry_.size && crc_ == entry_.packing.crc.value_or(crc_);
    return isWhole ? kRarSuccess : kRarBadData;
}

} // namespace rar
