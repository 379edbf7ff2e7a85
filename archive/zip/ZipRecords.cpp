#include "archive/zip/ZipRecords.h"

#include "base/LittleEndian.h"

namespace zip {
namespace {

std::int32_t ReadSigned32(const std::uint8_t* bytes) {
    return static_cast<std::int32_t>(base::LoadLittle32(bytes));
}

} // namespace

EndRecord ParseEndRecord(std::span<const std::uint8_t, kEndSize> bytes) {
    const std::uint8_t* at = bytes.data();
    EndRecord record;
    record.signature = base::LoadLittle32(at);
    record.entriesOnThisDisk = static_cast<std::int16_t>(base::LoadLittle16(at + 8));
    record.directoryOffset = ReadSigned32(at + 16);
    record.commentLength = base::LoadLittle16(at + 20);
    return record;
}

LocalHeader ParseLocalHeader(std::span<const std::uint8_t, kLocalSize> bytes) {
    const std::uint8_t* at = bytes.data();
    LocalHeader header;
    header.signature = base::LoadLittle32(at);
    header.compressedSize = ReadSigned32(at + 18);
    header.textLength = std::uint32_t{base::LoadLittle16(at + 26)} + base::LoadLittle16(at + 28);
    return header;
}

CentralHeader ParseCentralHeader(std::span<const std::uint8_t, kCentralSize> bytes) {
    const std::uint8_t* at = bytes.data();
    CentralHeader header;
    header.signature = base::LoadLittle32(at);
    ArchiveEntry& entry = header.entry;
    entry.versionMadeBy = base::LoadLittle16(at + 4);
    entry.versionNeeded = base::LoadLittle16(at + 6);
    entry.flags = base::LoadLittle16(at + 8);
    entry.method = static_cast<std::int16_t>(base::LoadLittle16(at + 10));
    entry.time = base::LoadLittle16(at + 12);
    entry.date = base::LoadLittle16(at + 14);
    entry.crc = base::LoadLittle32(at + 16);
    entry.compressedSize = ReadSigned32(at + 20);
    entry.uncompressedSize = ReadSigned32(at + 24);
    header.nameLength = base::LoadLittle16(at + 28);
    header.extraLength = base::LoadLittle16(at + 30);
    header.commentLength = base::LoadLittle16(at + 32);
    entry.diskNumberStart = base::LoadLittle16(at + 34);
    entry.internalAttributes = base::LoadLittle16(at + 36);
    entry.externalAttributes = base::LoadLittle32(at + 38);
    entry.localHeaderOffset = ReadSigned32(at + 42);
    return header;
}

} // namespace zip
