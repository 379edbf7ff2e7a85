#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cabinet {

// The cabinet format: a header (CFHEADER), one record per folder (CFFOLDER) and per file (CFFILE), then the
// data blocks (CFDATA) of each folder. Numbers are little-endian.

inline constexpr std::uint32_t kSignature = 0x4643534D; // "MSCF"
inline constexpr std::size_t kHeaderSize = 36;
inline constexpr std::size_t kReserveSizesSize = 4;
inline constexpr std::size_t kFolderSize = 8;
inline constexpr std::size_t kFileSize = 16; // before the name
inline constexpr std::size_t kDataSize = 8;  // before the reserved area and the data
inline constexpr std::size_t kLongestName = 255;

inline constexpr std::uint16_t kHasPrevious = 0x0001;
inline constexpr std::uint16_t kHasNext = 0x0002;
inline constexpr std::uint16_t kHasReserve = 0x0004;

inline constexpr std::uint16_t kMethodMask = 0x000F;
inline constexpr std::uint16_t kStored = 0;
inline constexpr std::uint16_t kMszip = 1;
inline constexpr std::uint16_t kQuantum = 2;
inline constexpr std::uint16_t kLzx = 3;

/// Folder numbers of files that do not lie in this cabinet alone.
inline constexpr std::uint16_t kContinuedFromPrevious = 0xFFFD;
inline constexpr std::uint16_t kContinuedToNext = 0xFFFE;
inline constexpr std::uint16_t kContinuedBoth = 0xFFFF;

inline constexpr std::uint16_t kAttributeExecute = 0x40;
inline constexpr std::uint16_t kAttributeUtf8Name = 0x80;

/// Decoded bytes of every data block of a folder but its last.
inline constexpr std::size_t kBlockSize = 32768;
/// Most stored bytes of a block; the format's own limit for methods that may grow data.
inline constexpr std::size_t kLargestStoredBlock = kBlockSize + 6144;
inline constexpr std::uint32_t kMostBlocks = 65535;
/// Decoded bytes that a folder, and so a file, can hold.
inline constexpr std::uint32_t kLargestFolder = kMostBlocks * kBlockSize;
static_assert(kLargestFolder == 0x7FFF8000);
inline constexpr std::size_t kMostFiles = 65535;

/// Checksum of a data block: of its stored bytes, then of its two size fields (`sizes`, 4 bytes).
std::uint32_t BlockChecksum(std::span<const std::uint8_t> data, const std::uint8_t* sizes);

} // namespace cabinet
