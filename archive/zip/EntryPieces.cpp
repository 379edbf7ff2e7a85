#include "archive/zip/EntryPieces.h"

namespace zip {

EntryPieces::EntryPieces(std::unique_ptr<platform::OutputFile> file, codec::Cls_CRC32& crc,
                         std::size_t expected, output::ExtractionObserver* observer)
    : file_(std::move(file)), crc_(crc), expected_(expected), observer_(observer) {
    crc_.ResetCRC32();
}

void EntryPieces::Take(std::span<const std::uint8_t> piece) {
    crc_.CalcCRC32Block(piece);
    size_ += piece.size();
    if (!failed_ && file_->Write(piece))
        failed_ = true;
    if (observer_)
        observer_->EntryProgress(size_, expected_);
}

bool EntryPieces::Commit(const std::optional<platform::FileTimes>& times) {
    return !failed_ && !file_->Commit({.times = times});
}

} // namespace zip
