#include "archive/cabinet/FolderReader.h"

#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/MspackFolderDecoder.h"
#include "archive/cabinet/MszipFolderDecoder.h"

#include <algorithm>
#include <vector>

namespace cabinet {
namespace {

constexpr std::size_t kCopyStep = 65536;
const ByteSink kNowhere;

} // namespace

base::SystemError FolderReader::Read(std::uint64_t offset, std::uint64_t size, const ByteSink& sink) {
    if (size == 0)
        return {};
    if (offset + size > folder_.Capacity())
        return {base::kErrorInvalidData};
    if (const Stretch* stretch = KeptAt(offset)) {
        const std::uint64_t kept = std::min(size, stretch->to - offset);
        if (const base::SystemError error = ReadKept(offset, kept, sink))
            return error;
        return Read(offset + kept, size - kept, sink);
    }
    if (offset + size > deadEnd_)
        return deadEndError_;
    if (!decoder_ || offset < decoder_->Position())
        Restart();
    if (const std::uint64_t passed = offset - decoder_->Position(); passed > 0) {
        if (const base::SystemError error = Decode(passed, kNowhere, true))
            return error;
    }
    return Decode(size, sink, keepsAll_);
}

const FolderReader::Stretch* FolderReader::KeptAt(std::uint64_t offset) const {
    const auto behind = std::ranges::upper_bound(kept_, offset, {}, &Stretch::from);
    return behind != kept_.begin() && offset < std::prev(behind)->to ? &*std::prev(behind) : nullptr;
}

void FolderReader::DropDecoder() {
    if (decoder_ && keepsAll_) {
        // The last block may be a short one, so the end is where decoding stops.
        while (decoder_ && decoder_->Position() < folder_.Capacity()) {
            if (Decode(std::min<std::uint64_t>(kBlockSize, folder_.Capacity() - decoder_->Position()),
                       kNowhere, true))
                break;
        }
    }
    decoder_.reset();
}

void FolderReader::Restart() {
    decoder_.reset();
    keepsAll_ = wasStarted_;
    wasStarted_ = true;
    kept_.clear(); // it would be decoded again anyway
    if (!libraryOnly_ && (folder_.method & kMethodMask) == kMszip)
        decoder_ = std::make_unique<MszipFolderDecoder>(source_.input, folder_, source_.dataReserve);
    else
        decoder_ = std::make_unique<MspackFolderDecoder>(source_.file, folder_, source_.dataReserve);
}

/// Takes a part of the scratch file.
void FolderReader::StartKeeping() {
    SharedScratch& scratch = source_.scratch;
    if (!scratch.file)
        scratch.file = platform::ScratchFile::Create();
    if (scratch.file && !hasPart_) {
        scratchBase_ = scratch.used;
        scratch.used += folder_.Capacity();
        hasPart_ = true;
    }
}

base::SystemError FolderReader::Decode(std::uint64_t count, const ByteSink& sink, bool keep) {
    const std::uint64_t start = decoder_->Position();
    base::SystemError error = DecodeKeeping(count, sink, keep);
    if (error.code == base::kErrorInvalidData && dynamic_cast<MszipFolderDecoder*>(decoder_.get())) {
        // libmspack decides what the block really is.
        const std::uint64_t reached = decoder_->Position();
        libraryOnly_ = true;
        decoder_ = std::make_unique<MspackFolderDecoder>(source_.file, folder_, source_.dataReserve);
        error = decoder_->Decode(reached, kNowhere);
        if (!error)
            error = DecodeKeeping(count - (reached - start), sink, keep);
    }
    if (error.code == base::kErrorInvalidData || error.code == base::kErrorCrc) {
        deadEnd_ = decoder_->Position();
        deadEndError_ = error;
    }
    if (error)
        decoder_.reset();
    return error;
}

base::SystemError FolderReader::DecodeKeeping(std::uint64_t count, const ByteSink& sink, bool keep) {
    if (keep)
        StartKeeping();
    if (!keep || !hasPart_)
        return decoder_->Decode(count, sink);
    const std::uint64_t start = decoder_->Position();
    if (kept_.empty() || kept_.back().to != start)
        kept_.push_back({start, start});
    bool hasRoom = true;
    // Nothing here may throw, because it is called through a library written in C.
    return decoder_->Decode(count, [&](std::span<const std::uint8_t> data) {
        Stretch& last = kept_.back();
        // When there is no room to keep it, it is decoded again when it is needed.
        hasRoom = hasRoom && !source_.scratch.file->WriteAt(scratchBase_ + last.to, data);
        if (hasRoom)
            last.to += data.size();
        return sink ? sink(data) : base::SystemError{};
    });
}

base::SystemError FolderReader::ReadKept(std::uint64_t offset, std::uint64_t size, const ByteSink& sink) {
    std::vector<std::uint8_t>& buffer = source_.scratch.buffer;
    buffer.resize(kCopyStep);
    while (size > 0) {
        const auto piece =
            std::span(buffer).first(static_cast<std::size_t>(std::min<std::uint64_t>(size, buffer.size())));
        if (const base::SystemError error = source_.scratch.file->ReadAt(scratchBase_ + offset, piece))
            return error;
        if (const base::SystemError error = sink(piece))
            return error;
        offset += piece.size();
        size -= piece.size();
    }
    return {};
}

} // namespace cabinet
