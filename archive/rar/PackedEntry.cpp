#include "archive/rar/PackedEntry.h"

#include <numeric>

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
        crc_.CalcCRC32Block(bytes);
    return sink_(bytes);
}

int CheckedOutput::Finish() const {
    const bool isSound = !entry_.packing.crc || crc_.CRC32() == *entry_.packing.crc;
    return done_ == entry_.size && isSound ? kRarSuccess : kRarBadData;
}

} // namespace rar
