#include "archive/codec/Crc32.h"
#include "archive/rar/RarBlock.h"
#include "archive/rar/RarBytes.h"
#include "archive/rar/RarName4.h"
#include "platform/Times.h"

#include <algorithm>

namespace rar {

namespace {

constexpr std::size_t kBaseSize = 7;
constexpr std::size_t kEntryBaseSize = 32; // up to the name, without the high halves of the sizes

enum Type : std::uint8_t { kTypeMain = 0x73, kTypeFile = 0x74, kTypeSub = 0x7A, kTypeEnd = 0x7B };

enum MainFlag : unsigned {
    kMainVolume = 0x01,
    kMainComment = 0x02,
    kMainNewNumbering = 0x10,
    kMainEncrypted = 0x80
};

enum FileFlag : unsigned {
    kSplitBefore = 0x01,
    kSplitAfter = 0x02,
    kEncrypted = 0x04,
    kComment = 0x08,
    kSolid = 0x10,
    kWindowMask = 0xE0, // all set: a folder
    kLarge = 0x100,
    kUnicode = 0x200,
    kSalt = 0x400,
    kExtendedTime = 0x1000
};

constexpr unsigned kEndMoreVolumes = 0x01;
constexpr unsigned kHasData = 0x8000;

constexpr std::uint8_t kHostUnix = 3;
constexpr std::uint8_t kMethodStored = 0x30;
constexpr std::uint32_t kUnixTypeMask = 0xF000;
constexpr std::uint32_t kUnixFolder = 0x4000;
constexpr std::uint32_t kUnixLink = 0xA000;
constexpr std::uint32_t kUnixMayRun = 0111;
constexpr std::uint32_t kDosFolder = 0x10;

/// The checksum is the low half of a CRC-32 of the header behind it. Older packers kept a comment inside the
/// header and left it out of the sum.
bool ChecksumFits(Bytes header, std::size_t summed) {
    const std::uint16_t stored = ByteTaker(header).Take16();
    const std::uint32_t sum =
        codec::Cls_CRC32().CalcCRC32File(header.first(std::min(summed, header.size())).subspan(2));
    return static_cast<std::uint16_t>(sum) == stored;
}

/// The field in front gives the time to two seconds; these bytes add the odd second and its fraction.
platform::FileTime Refine(platform::FileTime time, ByteTaker& taker) {
    constexpr std::uint64_t kSecond = 10'000'000;
    const unsigned flags = taker.Take16() >> 12; // the file's last change; other times follow
    if (!taker.Good() || (flags & 8) == 0)
        return time;
    if ((flags & 4) != 0)
        time.ticks += kSecond;
    const unsigned count = flags & 3;
    std::uint64_t fraction = 0;
    for (unsigned i = 0; i < count; ++i)
        fraction |= std::uint64_t{taker.Take8()} << 8 * (i + 3 - count);
    if (taker.Good() && fraction < kSecond)
        time.ticks += fraction;
    return time;
}

/// The fields of an entry's header behind the base ones; `flags` are those of the block.
bool ParseEntry(ByteTaker taker, unsigned flags, std::uint64_t& packed, EntryHeader& entry) {
    packed = taker.Take32();
    entry.size = taker.Take32();
    const std::uint8_t host = taker.Take8();
    entry.packing.crc = taker.Take32();
    const std::uint16_t time = taker.Take16();
    const std::uint16_t date = taker.Take16();
    entry.packing.version = taker.Take8();
    entry.packing.method = taker.Take8();
    const std::uint16_t nameSize = taker.Take16();
    const std::uint32_t attributes = taker.Take32();
    if ((flags & kLarge) != 0) {
        packed |= std::uint64_t{taker.Take32()} << 32;
        entry.size |= std::uint64_t{taker.Take32()} << 32;
    }
    const Bytes name = taker.Take(nameSize);
    if (!taker.Good() || name.empty())
        return false;
    entry.name = (flags & kUnicode) != 0 ? UnicodeName(name) : PlainName(name);
    if ((flags & kSalt) != 0)
        taker.Take(8);
    platform::FileTime local;
    if (platform::DosDateTimeToFileTime(date, time, local)) {
        if ((flags & kExtendedTime) != 0)
            local = Refine(local, taker);
        entry.lastWrite = platform::LocalFileTimeToFileTime(local);
    }
    const bool isUnix = host == kHostUnix;
    entry.folder = (flags & kWindowMask) == kWindowMask ||
                   (isUnix ? (attributes & kUnixTypeMask) == kUnixFolder : (attributes & kDosFolder) != 0);
    entry.link = isUnix && (attributes & kUnixTypeMask) == kUnixLink;
    entry.executable = isUnix && (attributes & kUnixMayRun) != 0;
    entry.splitBefore = (flags & kSplitBefore) != 0;
    entry.splitAfter = (flags & kSplitAfter) != 0;
    entry.packing.stored = entry.packing.method == kMethodStored;
    entry.packing.solid = (flags & kSolid) != 0;
    entry.packing.encrypted = (flags & kEncrypted) != 0;
    entry.packing.window = static_cast<std::uint16_t>(flags & kWindowMask);
    return true;
}

} // namespace

std::size_t HeaderLength4(Bytes start) {
    if (start.size() < kBaseSize)
        return 0;
    const std::size_t length = ByteTaker(start.subspan(5)).Take16();
    return length < kBaseSize ? 0 : length;
}

bool ParseBlock4(Bytes header, Block& block) {
    ByteTaker taker(header.subspan(2));
    const std::uint8_t type = taker.Take8();
    const unsigned flags = taker.Take16();
    taker.Take16(); // the length
    std::size_t summed = header.size();
    switch (type) {
    case kTypeMain:
        block.kind = BlockKind::kMain;
        block.isVolume = (flags & kMainVolume) != 0;
        block.oldNumbering = (flags & kMainNewNumbering) == 0;
        block.encryptedHeaders = (flags & kMainEncrypted) != 0;
        if ((flags & kMainComment) != 0)
            summed = 13;
        break;
    case kTypeFile:
        block.kind = BlockKind::kEntry;
        if (!ParseEntry(taker, flags, block.dataSize, block.entry))
            return false;
        if ((flags & kComment) != 0)
            summed =
                kEntryBaseSize + ((flags & kLarge) != 0 ? 8 : 0) + ByteTaker(header.subspan(26)).Take16();
        break;
    case kTypeSub:
        block.dataSize = taker.Take32();
        if ((flags & kLarge) != 0) {
            taker.Take(kEntryBaseSize - kBaseSize - 4);
            block.dataSize |= std::uint64_t{taker.Take32()} << 32;
        }
        break;
    case kTypeEnd:
        block.kind = BlockKind::kEnd;
        block.moreVolumes = (flags & kEndMoreVolumes) != 0;
        break;
    default:
        if ((flags & kHasData) != 0)
            block.dataSize = taker.Take32();
    }
    return taker.Good() && ChecksumFits(header, summed);
}

} // namespace rar
