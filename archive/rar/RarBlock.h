#pragma once

#include "platform/Times.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace rar {

// A RAR archive is a signature followed by blocks. Each block is a header with its checksum, and data behind
// it in some cases. Numbers are little-endian. Format 4 is that of RAR 1.5 to 4. Format 5 is that of RAR 5,
// whose numbers mostly have a variable length (seven bits in each byte, the lowest first).

inline constexpr std::array<std::uint8_t, 7> kSignature4{'R', 'a', 'r', '!', 0x1A, 7, 0};
inline constexpr std::array<std::uint8_t, 8> kSignature5{'R', 'a', 'r', '!', 0x1A, 7, 1, 0};

using Bytes = std::span<const std::uint8_t>;

/// How the data of an entry is packed, as its header says.
struct Packing {
    bool stored = false;
    bool solid = false; ///< needs the entries before it
    bool encrypted = false;
    bool sizeKnown = true;
    std::uint8_t version = 0;         ///< format 4: of the packer that can unpack it, times ten
    std::uint8_t method = 0;          ///< format 4
    std::uint16_t window = 0;         ///< format 4: the header's flags that tell the dictionary's size
    std::uint64_t compression = 0;    ///< format 5: the compression information whole
    std::optional<std::uint32_t> crc; ///< CRC-32 of the unpacked bytes
    std::optional<std::array<std::uint8_t, 32>> blake2;
};

/// What the header of an entry says.
struct EntryHeader {
    std::string name; ///< UTF-8, backslashes between folders
    std::uint64_t size = 0;
    Packing packing;
    std::optional<platform::FileTime> lastWrite; ///< UTC
    bool folder = false;
    bool link = false; ///< of any kind, copies of other entries included
    bool executable = false;
    bool splitBefore = false; ///< began in the volume before
    bool splitAfter = false;  ///< goes on in the next volume
};

enum class BlockKind { kMain, kEntry, kEncryption, kEnd, kOther };

/// One block's header.
struct Block {
    BlockKind kind = BlockKind::kOther;
    std::uint64_t dataSize = 0; ///< bytes behind the header
    EntryHeader entry;
    bool encryptedHeaders = false; ///< main: what follows cannot be read without a password
    bool oldNumbering = false;     ///< main: volumes go on with .r00
    bool isVolume = false;         ///< main
    bool moreVolumes = false;      ///< end
};

/// Length of the header that starts with `start`; 0 when there are too few bytes to tell, or when it is no
/// header.
std::size_t HeaderLength4(Bytes start);
std::size_t HeaderLength5(Bytes start);

/// Bytes that are enough for HeaderLength.
inline constexpr std::size_t kHeaderStart = 7;

/// Longest header of either format.
inline constexpr std::size_t kLongestHeader = std::size_t{2} << 20;

/// Reads one whole header of the length that HeaderLength returned. Returns false when it is damaged.
bool ParseBlock4(Bytes header, Block& block);
bool ParseBlock5(Bytes header, Block& block);

} // namespace rar
