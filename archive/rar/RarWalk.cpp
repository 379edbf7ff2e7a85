#include "archive/rar/RarWalk.h"

#include <algorithm>
#include <array>

namespace rar {

namespace {

constexpr std::size_t kReadAhead = 8192;
constexpr std::array<std::uint8_t, 4> kSignatureBefore15{'R', 'E', '~', '^'};
constexpr std::size_t kSignatureCommon = 6; // of both formats

bool StartsWith(Bytes bytes, Bytes start) {
    return bytes.size() >= start.size() && std::ranges::equal(bytes.first(start.size()), start);
}

/// 4 or 5, or a result code.
int FormatOf(Bytes start) {
    if (StartsWith(start, kSignature4))
        return 4;
    if (StartsWith(start, kSignature5))
        return 5;
    const bool isOther = StartsWith(start, kSignatureBefore15) ||
                         (start.size() > kSignatureCommon && start[kSignatureCommon] > 1 &&
                          StartsWith(start, Bytes(kSignature5).first(kSignatureCommon)));
    return isOther ? kRarUnknownFormat : kRarNotRar;
}

} // namespace

int RarWalk::Open() {
    return EnterVolume(0);
}

/// Opens a volume and reads its main header.
int RarWalk::EnterVolume(std::size_t number) {
    file_ = volumes_.Volume(number);
    if (!file_)
        return kRarCannotOpen;
    number_ = number;
    input_.emplace(*file_, kReadAhead);
    std::array<std::uint8_t, kSignature5.size()> start{};
    const std::size_t count = input_->ReadSome(start);
    const int format = FormatOf(Bytes(start).first(count));
    if (input_->Faulted())
        return kRarReadError;
    if (format > 5)
        return format;
    if (format_ != 0 && format != format_)
        return kRarBadData;
    format_ = format;
    dataStart_ = format == 4 ? kSignature4.size() : kSignature5.size();
    Block block;
    block.dataSize = 0;
    input_->Seek(dataStart_);
    const int result = ReadBlock(block);
    if (result != kRarSuccess)
        return result == kRarEndOfArchive ? kRarBadData : result;
    if (block.kind != BlockKind::kMain || block.encryptedHeaders)
        return kRarBadData;
    volumes_.SetOldNumbering(block.oldNumbering);
    return kRarSuccess;
}

/// Reads the header at the input's position and moves on to the block behind its data. kRarEndOfArchive when
/// the file ends just here.
int RarWalk::ReadBlock(Block& block) {
    const std::uint64_t start = input_->Position();
    if (start == file_->Size())
        return kRarEndOfArchive;
    header_.resize(kHeaderStart);
    header_.resize(input_->ReadSome(header_));
    const std::size_t read = header_.size();
    const std::size_t length = format_ == 4 ? HeaderLength4(header_) : HeaderLength5(header_);
    if (length >= kHeaderStart && start < file_->Size() && length <= file_->Size() - start) {
        header_.resize(length);
        if (input_->ReadSome(std::span(header_).subspan(read)) == length - read) {
            block = {};
            if (format_ == 4 ? ParseBlock4(header_, block) : ParseBlock5(header_, block)) {
                dataStart_ = start + length;
                // What is cut off here is found when it is used, or by the next header.
                const std::uint64_t left = file_->Size() - dataStart_;
                input_->Seek(block.dataSize > left ? file_->Size() + 1 : dataStart_ + block.dataSize);
                return kRarSuccess;
            }
        }
    }
    return input_->Faulted() ? kRarReadError : kRarBadData;
}

/// Reads on, over the ends of volumes, to the header of an entry.
int RarWalk::FindEntry(Block& block) {
    for (;;) {
        int result = ReadBlock(block);
        if (result == kRarEndOfArchive)
            return endIsOptional_ && format_ == 4 ? kRarEndOfArchive : kRarBadData;
        if (result == kRarSuccess && block.kind == BlockKind::kEnd)
            result = block.moreVolumes ? EnterVolume(number_ + 1) : kRarEndOfArchive;
        else if (result == kRarSuccess && block.kind == BlockKind::kEncryption)
            result = kRarBadData;
        if (result != kRarSuccess || block.kind == BlockKind::kEntry)
            return result;
    }
}

void RarWalk::AddPiece(Entry& entry, const Block& block) const {
    const std::uint64_t left = file_->Size() - dataStart_;
    if (block.dataSize > left)
        entry.obstacle = kRarBadData;
    entry.pieces.push_back({number_, dataStart_, std::min(block.dataSize, left)});
}

/// Finds the pieces of an entry in the volumes behind. The checksums of the last header are those of the
/// whole.
void RarWalk::Follow(Entry& entry) {
    bool more = entry.header.splitAfter;
    while (more) {
        Block block;
        int result = EnterVolume(number_ + 1);
        if (result == kRarSuccess)
            result = FindEntry(block);
        if (result == kRarSuccess && (!block.entry.splitBefore || block.entry.name != entry.header.name))
            result = kRarBadData;
        if (result != kRarSuccess) {
            ended_ = result == kRarEndOfArchive ? kRarBadData : result;
            entry.obstacle = ended_;
            return;
        }
        AddPiece(entry, block);
        entry.header.packing.crc = block.entry.packing.crc;
        entry.header.packing.blake2 = block.entry.packing.blake2;
        more = block.entry.splitAfter;
    }
}

int RarWalk::Next(Entry& entry) {
    if (ended_ != kRarSuccess)
        return ended_;
    Block block;
    ended_ = FindEntry(block);
    if (ended_ != kRarSuccess)
        return ended_;
    entry = {};
    entry.header = std::move(block.entry);
    entry.archive = volumes_.Path(number_);
    AddPiece(entry, block);
    Follow(entry);
    // Of an entry that began in an earlier volume only the rest is here.
    if (entry.header.splitBefore)
        entry.obstacle = kRarCannotOpen;
    return kRarSuccess;
}

} // namespace rar
