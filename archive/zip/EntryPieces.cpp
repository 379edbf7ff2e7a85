#include "archive/zip/EntryPieces.h"

namespace zip {

EntryPieces::EntryPieces(std::unique_ptr<platform::OutputFile> file, codec::Cls_CRC32& crc,
                         std::string_view name, std::size_t expected, base::WorkObserver* observer)
    : file_(std::move(file)), crc_(crc), name_(name), expected_(expected), observer_(observer) {
    crc_.ResetCRC32();
}

void EntryPieces::Take(std::span<const std::uint8_t> piece) {
    crc_.CalcCRC32Block(piece);
    size_ += piece.size();
    if (!failed_ && file_->Write(piece))
        failed_ = true;
    if (observer_)
        observer_->Proceed({name_, 0, piece.size(), expected_});
}

bool EntryPieces::Commit(const std::optional<platform::FileTimes>& times) {
    return !failed_ && !file_->Commit({.times = times});
}

} // namespace zip
