#include "archive/rar/RarStream.h"

#include "archive/rar/RarHeaders.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <utility>

namespace rar {

namespace {

constexpr std::size_t kChunk = 256 * 1024;
/// How many calls in a row may return no bytes before the entry is given up.
constexpr int kMostIdleCalls = 1000;

} // namespace

RarStream::RarStream(int format, RarVolumes& volumes)
    : format_(format), volumes_(volumes), archive_(::archive_read_new(), ::archive_read_free) {
    sources_.push_back({.bytes = ArchiveStart(format), .piece = {}});
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

/// Makes one call only, because on damaged headers the library may return a warning every time.
bool RarStream::FindEntry() {
    archive_entry* told = nullptr;
    const int read = ::archive_read_next_header(archive_.get(), &told);
    return read == ARCHIVE_OK || read == ARCHIVE_WARN;
}

/// Lines the entry up for the library.
void RarStream::Begin(const PackedEntry& entry) {
    sources_.push_back({.bytes = EntryStart(format_, entry), .piece = {}});
    for (const Piece& piece : entry.pieces)
        sources_.push_back({.bytes = {}, .piece = piece});
    sources_.push_back({.bytes = EntryEnd(format_), .piece = {}});
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
            buffer_ = std::exchange(source.bytes, {});
        } else if (source.piece.length > 0) {
            count = static_cast<std::size_t>(std::min<std::uint64_t>(kChunk, source.piece.length));
            buffer_.resize(std::max(buffer_.size(), count));
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

} // namespace rar
