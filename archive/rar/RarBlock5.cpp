#include "archive/codec/Crc32.h"
#include "archive/rar/RarBlock.h"
#include "archive/rar/RarBytes.h"
#include "archive/rar/RarName4.h"
#include "base/Utf8.h"

#include <algorithm>

namespace rar {

namespace {

constexpr std::size_t kCrcSize = 4;
constexpr std::size_t kLongestLengthField = 3;

enum Type : std::uint64_t {
    kTypeMain = 1,
    kTypeFile = 2,
    kTypeService = 3,
    kTypeEncryption = 4,
    kTypeEnd = 5
};

enum BlockFlag : std::uint64_t { kHasExtra = 0x01, kHasData = 0x02, kSplitBefore = 0x08, kSplitAfter = 0x10 };

enum FileFlag : std::uint64_t { kFolder = 0x01, kHasTime = 0x02, kHasCrc = 0x04, kSizeUnknown = 0x08 };

constexpr std::uint64_t kMainVolume = 0x01;
constexpr std::uint64_t kEndMoreVolumes = 0x01;

enum ExtraType : std::uint64_t {
    kExtraEncryption = 1,
    kExtraHash = 2,
    kExtraTime = 3,
    kExtraRedirection = 5
};

enum TimeFlag : std::uint64_t {
    kTimeUnix = 0x01,
    kTimeWritten = 0x02,
    kTimeCreated = 0x04,
    kTimeRead = 0x08,
    kTimeNano = 0x10
};

constexpr std::uint64_t kHostUnix = 1;
constexpr std::uint64_t kUnixMayRun = 0111;
constexpr std::uint64_t kHashBlake2 = 0;
constexpr std::uint64_t kSolidBit = 0x40;
constexpr unsigned kMethodShift = 7;

constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr std::uint64_t kUnixEpoch = 11'644'473'600; // seconds from 1601 to 1970

platform::FileTime TimeOfUnix(std::uint64_t seconds, std::uint64_t nanoseconds = 0) {
    return {(seconds + kUnixEpoch) * kTicksPerSecond + nanoseconds / 100};
}

/// The time record: first the times, then, for Unix, the nanoseconds of each.
void ParseTime(ByteTaker taker, EntryHeader& entry) {
    const std::uint64_t flags = taker.TakeVariable();
    if ((flags & kTimeWritten) == 0)
        return;
    if ((flags & kTimeUnix) == 0) {
        if (const std::uint64_t ticks = taker.Take64(); taker.Good())
            entry.lastWrite = platform::FileTime{ticks};
        return;
    }
    const std::uint32_t seconds = taker.Take32();
    std::uint32_t nanoseconds = 0;
    if ((flags & kTimeNano) != 0) {
        taker.Take(4 * static_cast<unsigned>(((flags & kTimeCreated) != 0) + ((flags & kTimeRead) != 0)));
        nanoseconds = taker.Take32() & 0x3FFFFFFF;
    }
    if (taker.Good() && nanoseconds < 1'000'000'000)
        entry.lastWrite = TimeOfUnix(seconds, nanoseconds);
}

void ParseHash(ByteTaker taker, Packing& packing) {
    if (taker.TakeVariable() != kHashBlake2)
        return;
    std::array<std::uint8_t, 32> digest;
    if (const Bytes bytes = taker.Take(digest.size()); bytes.size() == digest.size()) {
        std::ranges::copy(bytes, digest.begin());
        packing.blake2 = digest;
    }
}

/// The records behind the fields of an entry. A damaged one hides those behind it, as it does for others.
void ParseExtra(ByteTaker taker, EntryHeader& entry) {
    while (!taker.Rest().empty()) {
        const std::uint64_t length = taker.TakeVariable();
        ByteTaker record(taker.Take(length));
        const std::uint64_t type = record.TakeVariable();
        if (!taker.Good() || !record.Good())
            return;
        if (type == kExtraEncryption)
            entry.packing.encrypted = true;
        else if (type == kExtraHash)
            ParseHash(record, entry.packing);
        else if (type == kExtraTime)
            ParseTime(record, entry);
        else if (type == kExtraRedirection)
            entry.link = true;
    }
}

bool ParseEntry(ByteTaker& taker, EntryHeader& entry) {
    const std::uint64_t flags = taker.TakeVariable();
    const std::uint64_t size = taker.TakeVariable();
    const std::uint64_t attributes = taker.TakeVariable();
    if ((flags & kHasTime) != 0)
        entry.lastWrite = TimeOfUnix(taker.Take32());
    if ((flags & kHasCrc) != 0)
        entry.packing.crc = taker.Take32();
    entry.packing.compression = taker.TakeVariable();
    const std::uint64_t host = taker.TakeVariable();
    const Bytes name = taker.Take(taker.TakeVariable());
    if (!taker.Good() || name.empty())
        return false;
    std::string_view text(reinterpret_cast<const char*>(name.data()), name.size());
    entry.name = WithBackslashes(base::CleanedUtf8(text.substr(0, text.find('\0'))));
    entry.size = size;
    entry.folder = (flags & kFolder) != 0;
    entry.executable = host == kHostUnix && (attributes & kUnixMayRun) != 0;
    entry.packing.sizeKnown = (flags & kSizeUnknown) == 0;
    entry.packing.stored = (entry.packing.compression >> kMethodShift & 7) == 0;
    entry.packing.solid = (entry.packing.compression & kSolidBit) != 0;
    return true;
}

} // namespace

std::size_t HeaderLength5(Bytes start) {
    ByteTaker taker(start);
    taker.Take(kCrcSize);
    const std::size_t before = taker.Rest().size();
    const std::uint64_t length = taker.TakeVariable();
    const std::size_t field = before - taker.Rest().size();
    if (!taker.Good() || length == 0 || field > kLongestLengthField || length > kLongestHeader)
        return 0;
    return kCrcSize + field + static_cast<std::size_t>(length);
}

bool ParseBlock5(Bytes header, Block& block) {
    ByteTaker taker(header);
    const std::uint32_t sum = taker.Take32();
    if (codec::Cls_CRC32().CalcCRC32File(taker.Rest()) != sum)
        return false;
    taker.TakeVariable(); // the length
    const std::uint64_t type = taker.TakeVariable();
    const std::uint64_t flags = taker.TakeVariable();
    const std::uint64_t extraSize = (flags & kHasExtra) != 0 ? taker.TakeVariable() : 0;
    if ((flags & kHasData) != 0)
        block.dataSize = taker.TakeVariable();
    if (!taker.Good() || extraSize > taker.Rest().size())
        return false;
    const Bytes rest = taker.Rest();
    const auto fieldsSize = rest.size() - static_cast<std::size_t>(extraSize);
    ByteTaker fields(rest.first(fieldsSize));
    switch (type) {
    case kTypeMain:
        block.kind = BlockKind::kMain;
        block.isVolume = (fields.TakeVariable() & kMainVolume) != 0;
        return fields.Good();
    case kTypeFile:
        block.kind = BlockKind::kEntry;
        if (!ParseEntry(fields, block.entry))
            return false;
        block.entry.splitBefore = (flags & kSplitBefore) != 0;
        block.entry.splitAfter = (flags & kSplitAfter) != 0;
        ParseExtra(ByteTaker(rest.subspan(fieldsSize)), block.entry);
        return true;
    case kTypeEncryption:
        block.kind = BlockKind::kEncryption;
        return true;
    case kTypeEnd:
        block.kind = BlockKind::kEnd;
        block.moreVolumes = (fields.TakeVariable() & kEndMoreVolumes) != 0;
        return fields.Good();
    default:
        return true;
    }
}

} // namespace rar
