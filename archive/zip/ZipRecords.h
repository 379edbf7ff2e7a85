#pragma once

#include "archive/zip/ArchiveEntry.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace zip {

// Records of a ZIP file (ZIP application note, section 4.3), all little-endian, each with its signature in
// front.

inline constexpr std::uint32_t kLocalSignature = 0x04034B50;
inline constexpr std::uint32_t kDescriptorSignature = 0x08074B50;
inline constexpr std::uint32_t kCentralSignature = 0x02014B50;
inline constexpr std::uint32_t kEndSignature = 0x06054B50;

// What can stand behind the last central header, besides the end record: a digital signature (4.3.13) and the
// 64-bit end record (4.3.14).
inline constexpr std::uint32_t kDigitalSignature = 0x05054B50;
inline constexpr std::uint32_t kEnd64Signature = 0x06064B50;

inline constexpr std::size_t kSignatureSize = 4;
inline constexpr std::size_t kLocalSize = 30;
inline constexpr std::size_t kDescriptorSize = 16;
inline constexpr std::size_t kCentralSize = 46;
inline constexpr std::size_t kEndSize = 22;

/// What is used of an end of central directory record (4.3.16).
struct EndRecord {
    std::uint32_t signature = 0;
    std::int16_t entriesOnThisDisk = 0; ///< negative: more than 32,767, and no number to rely on
    std::int32_t directoryOffset = 0;
    std::uint16_t commentLength = 0;
};

EndRecord ParseEndRecord(std::span<const std::uint8_t, kEndSize> bytes);

/// What is used of a local file header (4.3.7).
struct LocalHeader {
    std::uint32_t signature = 0;
    std::int32_t compressedSize = 0;
    std::uint32_t textLength = 0; ///< of name and extra field together
};

LocalHeader ParseLocalHeader(std::span<const std::uint8_t, kLocalSize> bytes);

/// A central directory file header (4.3.12): the entry without its texts, and their lengths.
struct CentralHeader {
    std::uint32_t signature = 0;
    ArchiveEntry entry;
    std::uint16_t nameLength = 0;
    std::uint16_t extraLength = 0;
    std::uint16_t commentLength = 0;

    std::size_t TextLength() const { return std::size_t{nameLength} + extraLength + commentLength; }
};

CentralHeader ParseCentralHeader(std::span<const std::uint8_t, kCentralSize> bytes);

} // namespace zip
