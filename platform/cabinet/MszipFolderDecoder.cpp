#include "MszipFolderDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace platform::cabinet {
namespace {

constexpr std::size_t kSpare = 512;
constexpr std::size_t kMarkSize = 2; // "CK"

} // namespace

MszipFolderDecoder::MszipFolderDecoder(BufferedInput& input, const Folder& folder, std::size_t dataReserve,
                                       MszipBlockDecoder decodeBlock)
    : input_(input), decodeBlock_(decodeBlock), dataReserve_(dataReserve), nextBlock_(folder.dataOffset),
      blocksLeft_(folder.blockCount), window_(2 * kBlockSize + kSpare) {}

SystemError MszipFolderDecoder::Decode(std::uint64_t count, const ByteSink& sink) {
    while (count > 0) {
        if (taken_ == blockSize_ && !DecodeBlock())
            return {kErrorInvalidData};
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(count, blockSize_ - taken_));
        if (sink) {
            if (const SystemError error = sink({&window_[kBlockSize + taken_], piece}))
                return error;
        }
        taken_ += piece;
        position_ += piece;
        count -= piece;
    }
    return {};
}

bool MszipFolderDecoder::DecodeBlock() {
    std::array<std::uint8_t, kDataSize> header;
    std::array<std::uint8_t, kLargestStoredBlock> stored;
    if (blocksLeft_ == 0)
        return false;
    input_.Seek(nextBlock_);
    if (input_.Read(header))
        return false;
    const std::uint32_t checksum = Load32(&header[0]);
    const std::size_t storedSize = Load16(&header[4]);
    const std::size_t size = Load16(&header[6]);
    if (storedSize < kMarkSize || storedSize > stored.size() || size == 0 || size > kBlockSize)
        return false;
    input_.Seek(input_.Position() + dataReserve_);
    const std::span<std::uint8_t> data(stored.data(), storedSize);
    if (input_.Read(data) || data[0] != 'C' || data[1] != 'K' ||
        (checksum != 0 && checksum != BlockChecksum(data, &header[4])))
        return false;

    // The block that has been handed over becomes the history of the next; only whole blocks reach back all
    // the way.
    if (blockSize_ != 0) {
        history_ = std::min(kBlockSize, history_ + blockSize_);
        std::memmove(&window_[kBlockSize - history_], &window_[kBlockSize + blockSize_ - history_], history_);
    }
    blockSize_ = 0;
    taken_ = 0;
    if (!decodeBlock_(data.subspan(kMarkSize), &window_[kBlockSize], history_, size, kSpare))
        return false;
    blockSize_ = size;
    nextBlock_ = input_.Position();
    --blocksLeft_;
    return true;
}

} // namespace platform::cabinet
