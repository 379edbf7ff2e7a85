#include "archive/rar/RarUnpacker.h"

#include <algorithm>

namespace rar {

namespace {

constexpr std::size_t kChunk = 256 * 1024;
constexpr std::uint8_t kOldestVersion4 = 29; // what the library unpacks of format 4
constexpr std::uint64_t kVersionMask5 = 0x3F;

/// Whether its bytes can be copied and checked without the library.
bool IsCopied(const PackedEntry& entry) {
    return entry.packing.stored && (entry.packing.crc || !entry.packing.blake2);
}

bool IsKnown(int format, const Packing& packing) {
    if (packing.encrypted || !packing.sizeKnown)
        return false;
    if (packing.stored)
        return true;
    return format == 4 ? !packing.solid && packing.version >= kOldestVersion4
                       : (packing.compression & kVersionMask5) == 0;
}

} // namespace

void RarUnpacker::Meet(int format, const Entry& entry) {
    format_ = format;
    current_ = {entry.header.packing, entry.header.size, entry.pieces};
    if (IsCopied(current_) || current_.size == 0)
        return;
    if (!current_.packing.solid) {
        run_.clear();
        // After a failure the position of the stream is unknown, and for format 4 a stream takes one entry
        // only.
        if (isBroken_ || format == 4)
            stream_.reset();
        isBroken_ = false;
    }
    // When an entry cannot be unpacked, neither can the rest of its solid run.
    isBroken_ = isBroken_ || entry.obstacle != kRarSuccess || !IsKnown(format, current_.packing);
    run_.push_back(current_);
}

int RarUnpacker::Unpack(const Sink& sink) {
    if (!IsKnown(format_, current_.packing))
        return kRarBadData;
    if (current_.size == 0)
        return CheckedOutput(current_, sink).Finish();
    return IsCopied(current_) ? CopyStored(current_, sink) : UnpackRun(sink);
}

int RarUnpacker::CopyStored(const PackedEntry& entry, const Sink& sink) {
    if (entry.PackedSize() != entry.size)
        return kRarBadData;
    CheckedOutput output(entry, sink);
    std::vector<std::uint8_t> buffer(static_cast<std::size_t>(std::min<std::uint64_t>(kChunk, entry.size)));
    for (Piece piece : entry.pieces) {
        const auto file = volumes_.Volume(piece.volume);
        while (piece.length > 0) {
            const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), piece.length));
            const auto part = std::span(buffer).first(count);
            if (!file || file->ReadAt(piece.offset, part) != count)
                return kRarReadError;
            if (const int result = output.Put(part); result != kRarSuccess)
                return result;
            piece.offset += count;
            piece.length -= count;
        }
    }
    return output.Finish();
}

/// Unpacks what the current entry needs, then the entry itself.
int RarUnpacker::UnpackRun(const Sink& sink) {
    if (!stream_)
        stream_ = std::make_unique<RarStream>(format_, volumes_);
    int result = kRarSuccess;
    while (!run_.empty() && !isBroken_) {
        const PackedEntry entry = std::move(run_.front());
        run_.pop_front();
        result = stream_->Unpack(
            entry, run_.empty() ? sink : [](Bytes) { return kRarSuccess; });
        isBroken_ = result != kRarSuccess;
    }
    return isBroken_ && result == kRarSuccess ? kRarBadData : result;
}

} // namespace rar
