#include "archive/zip/ZipExtraction.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "archive/codec/Inflate.h"
#include "archive/codec/Reduce.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/EntryFile.h"
#include "archive/zip/ZipRecords.h"
#include "base/OutputPathRule.h"

#include <algorithm>
#include <new>

namespace zip {

namespace {

constexpr std::size_t kEncryptionHeader = 12;

// Methods (ZIP application note, section 4.4.5).
constexpr std::int16_t kStored = 0;
constexpr std::int16_t kShrunk = 1;
constexpr std::int16_t kReduced1 = 2;
constexpr std::int16_t kReduced4 = 5;
constexpr std::int16_t kImploded = 6;
constexpr std::int16_t kTokenized = 7;
constexpr std::int16_t kDeflated = 8;
constexpr std::int16_t kDeflated64 = 9;
constexpr std::int16_t kOldImploded = 10;

bool IsReduced(std::int16_t method) {
    return method >= kReduced1 && method <= kReduced4;
}

bool IsDecoded(std::int16_t method) {
    return method == kStored || method == kDeflated || method == kDeflated64 || IsReduced(method);
}

bool IsRefused(std::int16_t method) {
    return method == kShrunk || method == kImploded || method == kTokenized || method == kOldImploded;
}

bool IsEncrypted(const ArchiveEntry& entry) {
    return (entry.flags & 1) != 0;
}

codec::ByteBuffer& Buffer() {
    return State().UnpackBuffer;
}

/// The target with the last separator that the open folders count on.
std::string AsTarget(std::string folder) {
    JoinEntryPath(folder, {});
    return folder;
}

} // namespace

bool IsFolderEntry(const ArchiveEntry& entry) {
    return entry.compressedSize == 0 && entry.fileName.ends_with('/');
}

ZipExtraction::ZipExtraction(platform::FileReader& archive, const std::vector<ArchiveEntry>& entries,
                             std::string folder, base::WorkObserver* observer)
    : archive_(archive), entries_(entries), folder_(AsTarget(std::move(folder))), observer_(observer),
      folders_(folder_, &messages_) {}

std::int16_t ZipExtraction::Run(const EntrySelection& selection) {
    const auto count = static_cast<std::int32_t>(entries_.size());
    for (std::int32_t number = 1; number <= count; ++number) {
        const auto position = static_cast<std::size_t>(number);
        entryInHand_ = entries_[position - 1].fileName;
        try {
            if (selection[position] && !ExtractEntry(entries_[position - 1])) {
                status_ = kStatusRefused;
                app::ShowText(IDS_WRONG_PASSWORD, IDS_WARNING_TITLE, app::kMessageError);
                break;
            }
        } catch (const std::bad_alloc&) {
            Buffer().Clear();
            Report(IDS_NOT_WRITTEN);
        }
        if (observer_ && !observer_->Proceed({.path = entryInHand_, .entries = 1})) {
            Buffer().Clear();
            return kStatusRefused;
        }
    }
    Buffer().Clear();
    messages_.Finish();
    return status_;
}

/// False when the password is missing or wrong, which ends the extraction.
bool ZipExtraction::ExtractEntry(const ArchiveEntry& entry) {
    if (IsFolderEntry(entry)) {
        CreateFolder(entry);
        return true;
    }
    const auto stored = FindStored(entry);
    if (!stored) {
        Report(IDS_NO_LOCAL_HEADER);
        return true;
    }
    if (CopyLarge(entry, *stored))
        return true;
    if (IsEncrypted(entry) || IsDecoded(entry.method))
        ReadStored(*stored);
    if (IsEncrypted(entry) && !Decrypt(entry))
        return false;
    if (IsRefused(entry.method))
        status_ = kStatusNothing;
    if (IsDecoded(entry.method) && !InflateLarge(entry)) {
        Decode(entry);
        WriteEntry(entry);
    }
    return true;
}

void ZipExtraction::CreateFolder(const ArchiveEntry& entry) {
    if (base::StaysInTarget(entry.fileName))
        CreateEntryFolder(folders_, entry.fileName, folder_);
    else
        Report(IDS_NOT_WRITTEN);
}

/// Finds the stored bytes behind the local header. Nothing when there is no local header at the recorded
/// offset.
std::optional<ZipExtraction::StoredBytes> ZipExtraction::FindStored(const ArchiveEntry& entry) {
    // The central name and size tell how much one read has to bring in; the local lengths decide.
    constexpr std::size_t kUsualExtra = 64;
    const auto recorded = static_cast<std::size_t>(std::max(entry.compressedSize, 0));
    const std::uint64_t offset = static_cast<std::uint32_t>(entry.localHeaderOffset);
    const auto bytes =
        archive_.View(offset, std::min(kLocalSize + entry.fileName.size() + kUsualExtra + recorded,
                                       ArchiveBytes::kLargestView / 4));
    if (bytes.size() < kLocalSize)
        return std::nullopt;
    const LocalHeader header = ParseLocalHeader(bytes.first<kLocalSize>());
    if (header.signature != kLocalSignature)
        return std::nullopt;
    const std::uint64_t start = offset + kLocalSize + header.textLength;
    const std::uint64_t left = archive_.Size() > start ? archive_.Size() - start : 0;
    return StoredBytes{start, static_cast<std::size_t>(std::min<std::uint64_t>(recorded, left))};
}

void ZipExtraction::ReadStored(const StoredBytes& stored) {
    Buffer().Resize(stored.size);
    Buffer().Resize(archive_.Read(stored.offset, Buffer().Span()));
}

/// Asks for the password of this extraction when there is none yet, checks it against the encryption header
/// (ZIP application note, section 6.1.6) and decrypts. False when it is missing or wrong.
bool ZipExtraction::Decrypt(const ArchiveEntry& entry) {
    if (password_.empty())
        password_ = app::Messages().Ask("Give Password", "Password requered", true).value_or("");
    if (password_.empty() || Buffer().Size() < kEncryptionHeader)
        return false;
    encrypt_.ZipPrepareKey(Buffer().Span(), password_);
    if (Buffer()[kEncryptionHeader - 1] != entry.crc >> 24)
        return false;
    Buffer().DropFront(kEncryptionHeader);
    encrypt_.ZipDecryptArray(Buffer().Span());
    return true;
}

void ZipExtraction::Decode(const ArchiveEntry& entry) {
    const std::int32_t lastIndex = std::max(entry.uncompressedSize, 0) - 1;
    if (entry.method == kDeflated || entry.method == kDeflated64)
        codec::Inflate(Buffer(), lastIndex, entry.method == kDeflated64);
    else if (IsReduced(entry.method))
        status_ = codec::Unreduce(Buffer(), entry.method, lastIndex);
}

/// Reports what the decoded bytes should have been and are not.
void ZipExtraction::Check(const ArchiveEntry& entry, std::size_t size, std::uint32_t crc) {
    if (size == 0 && entry.crc != 0)
        Report(IDS_NO_DATA);
    if (size != 0 && crc != entry.crc)
        Report(IDS_WRONG_CHECKSUM);
    if (entry.uncompressedSize < 0 || size != static_cast<std::size_t>(entry.uncompressedSize))
        Report(IDS_WRONG_SIZE);
}

/// Checks the decoded bytes and writes them whatever the checks say.
void ZipExtraction::WriteEntry(const ArchiveEntry& entry) {
    const auto bytes = std::span<const std::uint8_t>(Buffer().Span());
    Check(entry, bytes.size(), crc_.CalcCRC32File(bytes));
    if (!base::StaysInTarget(entry.fileName) ||
        WriteEntryFile(folders_, entry.fileName, folder_, bytes, entry.date, entry.time) != 0)
        Report(IDS_NOT_WRITTEN);
}

/// Begins the file of an entry that is worth writing in pieces. Null for a small one, and where no file can
/// be begun: the ordinary way reports why, in its place among the other reports.
std::unique_ptr<platform::OutputFile> ZipExtraction::BeginLarge(const ArchiveEntry& entry, std::size_t size) {
    constexpr std::size_t kLarge = std::size_t{2} << 20;
    return size >= kLarge && base::StaysInTarget(entry.fileName)
               ? BeginEntryFile(folders_, entry.fileName, folder_)
               : nullptr;
}

/// Copies a large stored entry from the archive; false when it is not one, or not to be copied.
bool ZipExtraction::CopyLarge(const ArchiveEntry& entry, const StoredBytes& stored) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    if (entry.method != kStored || IsEncrypted(entry))
        return false;
    auto file = BeginLarge(entry, stored.size);
    if (!file)
        return false;
    EntryPieces pieces(std::move(file), crc_, entryInHand_, stored.size, observer_);
    Buffer().Resize(kPiece);
    while (pieces.Size() < stored.size) {
        const std::size_t wanted = std::min(kPiece, stored.size - pieces.Size());
        const std::size_t count = archive_.Read(stored.offset + pieces.Size(), Buffer().Span().first(wanted));
        pieces.Take(Buffer().Span().first(count));
        if (count < wanted)
            break;
    }
    WriteLarge(entry, pieces);
    return true;
}

/// Decodes a large deflated entry into its file; false when it is not one, or not to be written so.
bool ZipExtraction::InflateLarge(const ArchiveEntry& entry) {
    if (entry.method != kDeflated && entry.method != kDeflated64)
        return false;
    const auto size = static_cast<std::size_t>(std::max(entry.uncompressedSize, 0));
    auto file = BeginLarge(entry, size);
    if (!file)
        return false;
    std::optional<EntryPieces> pieces(std::in_place, std::move(file), crc_, entryInHand_, size, observer_);
    if (codec::InflateInPieces(Buffer().Span(), entry.uncompressedSize - 1, entry.method == kDeflated64,
                               [&](std::span<const std::uint8_t> piece) { pieces->Take(piece); })) {
        WriteLarge(entry, *pieces);
        return true;
    }
    // Nothing of the new file is left when the stored bytes, as they still are, are written instead.
    pieces.reset();
    WriteEntry(entry);
    return true;
}

void ZipExtraction::WriteLarge(const ArchiveEntry& entry, EntryPieces& pieces) {
    Check(entry, pieces.Size(), pieces.Crc());
    if (!pieces.Commit(EntryTimes(entry.date, entry.time)))
        Report(IDS_NOT_WRITTEN);
}

void ZipExtraction::Report(std::uint32_t textId) {
    messages_.Report(textId, IDS_WARNING_TITLE, entryInHand_);
}

} // namespace zip
