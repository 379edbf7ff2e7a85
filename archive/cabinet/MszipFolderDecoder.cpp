#include "archive/cabinet/MszipFolderDecoder.h"

#include "archive/codec/MszipBlock.h"
#include "base/LittleEndian.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace cabinet {
namespace {

constexpr std::size_t kSpare = 512;
constexpr std::size_t kBlocksAtOnce = 8; // small enough for a processor's second-level cache
constexpr std::size_t kMarkSize = 2;     // "CK"

} // namespace

MszipFolderDecoder::MszipFolderDecoder(platform::BufferedInput& input, const Folder& folder,
                                       std::size_t dataReserve)
    : input_(input), dataReserve_(dataReserve), nextBlock_(folder.dataOffset), blocksLeft_(folder.blockCount),
      window_((1 + std::min<std::size_t>(folder.blockCount, kBlocksAtOnce)) * kBlockSize + kSpare) {}

base::SystemError MszipFolderDecoder::Decode(std::uint64_t count, const ByteSink& sink) {
    while (count > 0) {
        if (taken_ == end_ && !HasRoom())
            StartOver();
        // What is wanted is handed over in pieces as large as the window allows.
        while (end_ - taken_ < count && HasRoom() && DecodeBlock()) {
        }
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(count, end_ - taken_));
        if (piece == 0)
            return {base::kErrorInvalidData};
        if (sink) {
            if (const base::SystemError error = sink({&window_[taken_], piece}))
                return error;
        }
        taken_ += piece;
        position_ += piece;
        count -= piece;
    }
    return {};
}

bool MszipFolderDecoder::HasRoom() const {
    return window_.size() - end_ >= kBlockSize + kSpare;
}

/// Goes on at the window's start, behind the history.
void MszipFolderDecoder::StartOver() {
    std::copy_n(&window_[end_ - kBlockSize], kBlockSize, window_.data());
    taken_ = end_ = kBlockSize;
}

/// Decodes one more block behind those in the window.
bool MszipFolderDecoder::DecodeBlock() {
    std::array<std::uint8_t, kDataSize> header;
    std::array<std::uint8_t, kLargestStoredBlock> stored;
    if (blocksLeft_ == 0)
        return false;
    input_.Seek(nextBlock_);
    if (input_.Read(header))
        return false;
    const std::uint32_t checksum = base::LoadLittle32(&header[0]);
    const std::size_t storedSize = base::LoadLittle16(&header[4]);
    const std::size_t size = base::LoadLittle16(&header[6]);
    if (storedSize < kMarkSize || storedSize > stored.size() || size == 0 || size > kBlockSize)
        return false;
    input_.Seek(input_.Position() + dataReserve_);
    const std::span<std::uint8_t> data(stored.data(), storedSize);
    if (input_.Read(data) || data[0] != 'C' || data[1] != 'K' ||
        (checksum != 0 && checksum != BlockChecksum(data, &header[4])))
        return false;
    if (!codec::DecodeMszipBlock(data.subspan(kMarkSize), &window_[end_], history_, size, kSpare))
        return false;
    end_ += size;
    history_ = std::min(kBlockSize, history_ + size);
    nextBlock_ = input_.Position();
    --blocksLeft_;
    return true;
}

} // namespace cabinet
