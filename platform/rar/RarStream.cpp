#include "RarStream.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <zlib.h>

namespace platform::rar {

namespace {

constexpr std::size_t kChunk = 256 * 1024;
/// Calls that may answer nothing at all before the entry is given up.
constexpr int kMostIdleCalls = 1000;
constexpr std::size_t kFiller = 64; // longer than what the library looks ahead

/// Builds a header; numbers as the formats have them.
class HeaderWriter {
  public:
    HeaderWriter& Put(std::uint64_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            bytes_.push_back(static_cast<std::uint8_t>(value >> 8 * i));
        return *this;
    }

    HeaderWriter& PutVariable(std::uint64_t value) {
        for (; value > 0x7F; value >>= 7)
            bytes_.push_back(static_cast<std::uint8_t>(value | 0x80));
        bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }

    HeaderWriter& PutBytes(Bytes bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }

    const std::vector<std::uint8_t>& Taken() const { return bytes_; }

  private:
    std::vector<std::uint8_t> bytes_;
};

std::uint32_t Crc(Bytes bytes) {
    return static_cast<std::uint32_t>(::crc32_z(0, bytes.data(), bytes.size()));
}

/// A header of format 4 with its checksum in front.
std::vector<std::uint8_t> Sealed4(const HeaderWriter& header) {
    return HeaderWriter().Put(Crc(header.Taken()), 2).PutBytes(header.Taken()).Taken();
}

/// The same of format 5, with its length too.
std::vector<std::uint8_t> Sealed5(const HeaderWriter& fields) {
    HeaderWriter header;
    header.PutVariable(fields.Taken().size()).PutBytes(fields.Taken());
    return HeaderWriter().Put(Crc(header.Taken()), 4).PutBytes(header.Taken()).Taken();
}

std::vector<std::uint8_t> Start4() {
    HeaderWriter main;
    main.Put(0x73, 1).Put(0, 2).Put(13, 2).Put(0, 6);
    return HeaderWriter().PutBytes(kSignature4).PutBytes(Sealed4(main)).Taken();
}

std::vector<std::uint8_t> Start5() {
    HeaderWriter main;
    constexpr std::uint64_t kSolidArchive = 4;
    main.PutVariable(1).PutVariable(0).PutVariable(kSolidArchive);
    return HeaderWriter().PutBytes(kSignature5).PutBytes(Sealed5(main)).Taken();
}

std::uint64_t PackedSize(const PackedEntry& entry) {
    std::uint64_t sum = 0;
    for (const Piece& piece : entry.pieces)
        sum += piece.length;
    return sum;
}

std::vector<std::uint8_t> EntryHeader4(const PackedEntry& entry) {
    constexpr std::size_t kSize = 41;
    constexpr unsigned kHasData = 0x8000;
    constexpr unsigned kLarge = 0x100;
    const std::uint64_t packed = PackedSize(entry);
    HeaderWriter header;
    header.Put(0x74, 1).Put(kHasData | kLarge | entry.packing.window, 2).Put(kSize, 2);
    header.Put(packed, 4).Put(entry.size, 4).Put(2, 1).Put(entry.packing.crc.value_or(0), 4).Put(0, 4);
    header.Put(entry.packing.version, 1).Put(entry.packing.method, 1).Put(1, 2).Put(0x20, 4);
    header.Put(packed >> 32, 4).Put(entry.size >> 32, 4).Put('x', 1);
    return Sealed4(header);
}

std::vector<std::uint8_t> EntryHeader5(const PackedEntry& entry) {
    HeaderWriter hash;
    if (entry.packing.blake2)
        hash.PutVariable(2 + entry.packing.blake2->size())
            .PutVariable(2)
            .PutVariable(0)
            .PutBytes(*entry.packing.blake2);
    constexpr std::uint64_t kExtra = 1;
    constexpr std::uint64_t kData = 2;
    constexpr std::uint64_t kHasCrc = 4;
    HeaderWriter fields;
    fields.PutVariable(2).PutVariable(kData | (hash.Taken().empty() ? 0 : kExtra));
    if (!hash.Taken().empty())
        fields.PutVariable(hash.Taken().size());
    fields.PutVariable(PackedSize(entry))
        .PutVariable(entry.packing.crc ? kHasCrc : 0)
        .PutVariable(entry.size);
    fields.PutVariable(0x20);
    if (entry.packing.crc)
        fields.Put(*entry.packing.crc, 4);
    fields.PutVariable(entry.packing.compression).PutVariable(0).PutVariable(1).Put('x', 1);
    return Sealed5(fields.PutBytes(hash.Taken()));
}

/// What the library finds behind an entry's data when it looks ahead: blocks that it passes over, since the
/// end of the stream would be for good. They hold nothing, because it passes over no more than their fields.
std::vector<std::uint8_t> Filler(int format) {
    if (format == 4)
        return std::vector<std::uint8_t>(kFiller);
    constexpr std::uint64_t kUnknownType = 0x60;
    constexpr std::uint64_t kSkipIfUnknown = 4;
    HeaderWriter block;
    block.PutVariable(kUnknownType).PutVariable(kSkipIfUnknown);
    HeaderWriter blocks;
    while (blocks.Taken().size() < kFiller)
        blocks.PutBytes(Sealed5(block));
    return blocks.Taken();
}

} // namespace

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

RarStream::RarStream(int format, RarVolumes& volumes)
    : format_(format), volumes_(volumes), buffer_(kChunk),
      archive_(::archive_read_new(), ::archive_read_free) {
    sources_.push_back({.bytes = format == 4 ? Start4() : Start5(), .piece = {}});
}

int RarStream::Unpack(const PackedEntry& entry, const Sink& sink) {
    if (!archive_)
        return kRarNoMemory;
    Begin(entry);
    const bool found = (isOpen_ || Open()) && FindEntry();
    const int result = found ? Drain(entry, sink) : kRarBadData;
    return result == kRarBadData && isFaulted_ ? kRarReadError : result;
}

bool RarStream::Open() {
    if (format_ == 4)
        ::archive_read_support_format_rar(archive_.get());
    else
        ::archive_read_support_format_rar5(archive_.get());
    isOpen_ = ::archive_read_open(archive_.get(), this, nullptr, ReadCallback, nullptr) == ARCHIVE_OK;
    return isOpen_;
}

/// One call only: on damaged headers the library may answer a warning for ever.
bool RarStream::FindEntry() {
    archive_entry* told = nullptr;
    const int read = ::archive_read_next_header(archive_.get(), &told);
    return read == ARCHIVE_OK || read == ARCHIVE_WARN;
}

/// Lines the entry up for the library.
void RarStream::Begin(const PackedEntry& entry) {
    sources_.push_back({.bytes = format_ == 4 ? EntryHeader4(entry) : EntryHeader5(entry), .piece = {}});
    for (const Piece& piece : entry.pieces)
        sources_.push_back({.bytes = {}, .piece = piece});
    sources_.push_back({.bytes = Filler(format_), .piece = {}});
}

int RarStream::Drain(const PackedEntry& entry, const Sink& sink) {
    CheckedOutput output(entry, sink);
    for (int idle = 0; idle < kMostIdleCalls;) {
        const void* bytes = nullptr;
        std::size_t size = 0;
        la_int64_t offset = 0;
        const int read = ::archive_read_data_block(archive_.get(), &bytes, &size, &offset);
        if (read == ARCHIVE_EOF)
            return output.Finish();
        if (read != ARCHIVE_OK && read != ARCHIVE_WARN && read != ARCHIVE_RETRY)
            return kRarBadData;
        idle = size == 0 ? idle + 1 : 0;
        if (size == 0)
            continue;
        if (static_cast<std::uint64_t>(offset) != output.Done())
            return kRarBadData;
        if (const int result = output.Put({static_cast<const std::uint8_t*>(bytes), size}))
            return result;
    }
    return kRarBadData;
}

std::ptrdiff_t RarStream::ReadCallback(archive* reader, void* self, const void** bytes) {
    const std::ptrdiff_t count = static_cast<RarStream*>(self)->Read(*bytes);
    if (count < 0)
        ::archive_set_error(reader, EIO, "the archive cannot be read");
    return count;
}

/// The next bytes of the line; none at its end.
std::ptrdiff_t RarStream::Read(const void*& bytes) {
    while (!sources_.empty()) {
        Source& source = sources_.front();
        std::size_t count = source.bytes.size();
        if (count > 0) {
            std::ranges::copy(source.bytes, buffer_.begin());
            source.bytes.clear();
        } else if (source.piece.length > 0) {
            count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size(), source.piece.length));
            const auto file = volumes_.Volume(source.piece.volume);
            if (!file || file->ReadAt(source.piece.offset, std::span(buffer_).first(count)) != count) {
                isFaulted_ = true;
                return ARCHIVE_FATAL;
            }
            source.piece.offset += count;
            source.piece.length -= count;
        } else {
            sources_.pop_front();
            continue;
        }
        bytes = buffer_.data();
        return static_cast<std::ptrdiff_t>(count);
    }
    return 0;
}

} // namespace platform::rar
