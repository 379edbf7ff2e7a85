#pragma once

#include <cstdint>
#include <string_view>

namespace zip {

/// One entry of a ZIP central directory (ZIP application note, section 4.3.12). Texts are UTF-8, converted
/// from the stored bytes through the system ANSI code page; they live as long as the directory that the entry
/// belongs to.
struct ArchiveEntry {
    std::uint16_t versionMadeBy = 0; ///< low byte: version x 10; high byte: host system
    std::uint16_t versionNeeded = 0;
    std::uint16_t flags = 0; ///< bit 0: encrypted
    std::int16_t method = 0;
    std::uint16_t time = 0;          ///< MS-DOS time, local
    std::uint16_t date = 0;          ///< MS-DOS date, local
    std::uint32_t crc = 0;           ///< CRC-32 of the decoded bytes
    std::int32_t compressedSize = 0; ///< stored bytes, the encryption header included
    std::int32_t uncompressedSize = 0;
    std::uint16_t diskNumberStart = 0;
    std::uint16_t internalAttributes = 0;
    std::uint32_t externalAttributes = 0;
    std::int32_t localHeaderOffset = 0;
    std::string_view fileName;   ///< "/" between folders; a folder entry ends in "/"
    std::string_view extraField; ///< raw bytes, kept, not interpreted
    std::string_view fileComment;
};

} // namespace zip
