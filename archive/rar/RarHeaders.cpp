#include "archive/rar/RarHeaders.h"

#include "archive/codec/Crc32.h"

namespace rar {

namespace {

constexpr std::size_t kFiller = 64; // more bytes than the library reads ahead

/// Builds a header, with numbers stored as the two formats store them.
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
    return codec::Cls_CRC32().CalcCRC32File(bytes);
}

/// A complete header of format 4: its checksum, then its fields.
std::vector<std::uint8_t> Sealed4(const HeaderWriter& header) {
    return HeaderWriter().Put(Crc(header.Taken()), 2).PutBytes(header.Taken()).Taken();
}

/// A complete header of format 5: its checksum, its length, then its fields.
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

std::vector<std::uint8_t> EntryHeader4(const PackedEntry& entry) {
    constexpr std::size_t kSize = 41;
    constexpr unsigned kHasData = 0x8000;
    constexpr unsigned kLarge = 0x100;
    const std::uint64_t packed = entry.PackedSize();
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
    fields.PutVariable(entry.PackedSize())
        .PutVariable(entry.packing.crc ? kHasCrc : 0)
        .PutVariable(entry.size);
    fields.PutVariable(0x20);
    if (entry.packing.crc)
        fields.Put(*entry.packing.crc, 4);
    fields.PutVariable(entry.packing.compression).PutVariable(0).PutVariable(1).Put('x', 1);
    return Sealed5(fields.PutBytes(hash.Taken()));
}

} // namespace

std::vector<std::uint8_t> ArchiveStart(int format) {
    return format == 4 ? Start4() : Start5();
}

std::vector<std::uint8_t> EntryStart(int format, const PackedEntry& entry) {
    return format == 4 ? EntryHeader4(entry) : EntryHeader5(entry);
}

/// The blocks fill at least kFiller bytes, which is more than the library reads ahead.
std::vector<std::uint8_t> EntryEnd(int format) {
    if (format == 4)
        return std::vector<std::uint8_t>(kFiller);
    constexpr std::uint64_t kUnknownType = 0x60;
    constexpr std::uint64_t kSkipIfUnknown = 4;
    HeaderWriter block;
    block.PutVariable(kUnknownType).PutVariable(kSkipIfUnknown);
    const std::vector<std::uint8_t> sealed = Sealed5(block);
    HeaderWriter blocks;
    while (blocks.Taken().size() < kFiller)
        blocks.PutBytes(sealed);
    return blocks.Taken();
}

} // namespace rar
