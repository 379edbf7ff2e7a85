#include "archive/zip/ZipRecords.h"

namespace zip {

EndRecord ParseEndRecord(std::span<const std::uint8_t, kEndSize> bytes) {
    const std::uint8_t* at = bytes.data();
    EndRecord record;
    record.signature = ReadDoubleWord(at);
    record.entriesOnThisDisk = static_cast<std::int16_t>(ReadWord(at + 8));
    record.directoryOffset = ReadSigned32(at + 16);
    record.commentLength = ReadWord(at + 20);
    return record;
}

LocalHeader ParseLocalHeader(std::span<const std::uint8_t, kLocalSize> bytes) {
    const std::uint8_t* at = bytes.data();
    LocalHeader header;
    header.signature = ReadDoubleWord(at);
    header.compressedSize = ReadSigned32(at + 18);
    header.textLength = std::uint32_t{ReadWord(at + 26)} + ReadWord(at + 28);
    return header;
}

CentralHeader ParseCentralHeader(std::span<const std::uint8_t, kCentralSize> bytes) {
    const std::uint8_t* at = bytes.data();
    CentralHeader header;
    header.signature = ReadDoubleWord(at);
    ArchiveEntry& entry = header.entry;
    entry.versionMadeBy = ReadWord(at + 4);
    entry.versionNeeded = ReadWord(at + 6);
    entry.flags = ReadWord(at + 8);
    entry.method = static_cast<std::int16_t>(ReadWord(at + 10));
    entry.time = ReadWord(at + 12);
    entry.date = ReadWord(at + 14);
    entry.crc = ReadDoubleWord(at + 16);
    entry.compressedSize = ReadSigned32(at + 20);
    entry.uncompressedSize = ReadSigned32(at + 24);
    header.nameLength = ReadWord(at + 28);
    header.extraLength = ReadWord(at + 30);
    header.commentLength = ReadWord(at + 32);
    entry.diskNumberStart = ReadWord(at + 34);
    entry.internalAttributes = ReadWord(at + 36);
    entry.externalAttributes = ReadDoubleWord(at + 38);
    entry.localHeaderOffset = ReadSigned32(at + 42);
    return header;
}

} // namespace zip
