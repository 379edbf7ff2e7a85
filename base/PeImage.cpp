#include "base/PeImage.h"

#include "base/LittleEndian.h"

#include <algorithm>

namespace base {
namespace {

// PE format: offsets in the DOS, COFF, optional and section headers.
constexpr std::size_t kPeOffsetField = 0x3C;
constexpr std::size_t kCoffHeaderSize = 24; // with the signature in front
constexpr std::size_t kSectionHeaderSize = 40;
constexpr std::uint16_t kMagicPe32 = 0x10B;
constexpr std::uint16_t kMagicPe32Plus = 0x20B;
constexpr std::size_t kResourceDirectory = 2; // its number among the data directories
constexpr std::uint16_t kMaxSections = 96;    // the loader's own limit

std::vector<PeSection> ReadSections(const Bytes& bytes, std::size_t table, std::size_t count) {
    std::vector<PeSection> sections;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t header = table + i * kSectionHeaderSize;
        PeSection section{};
        section.address = bytes.DoubleWord(header + 12);
        section.offset = bytes.DoubleWord(header + 20);
        section.size = bytes.DoubleWord(header + 16);
        // A file cut short keeps the part of the section that it still has.
        if (section.offset < bytes.Size())
            section.size = std::min(section.size, static_cast<std::uint32_t>(bytes.Size() - section.offset));
        else
            section.size = 0;
        sections.push_back(section);
    }
    return sections;
}

} // namespace

std::uint16_t Bytes::Word(std::size_t offset) const {
    return Has(offset, 2) ? LoadLittle16(At(offset)) : std::uint16_t{0};
}

std::uint32_t Bytes::DoubleWord(std::size_t offset) const {
    return Has(offset, 4) ? LoadLittle32(At(offset)) : 0;
}

std::string_view Bytes::Part(std::size_t offset, std::size_t size) const {
    return Has(offset, size) ? data_.substr(offset, size) : std::string_view();
}

std::optional<std::size_t> PeImage::OffsetOf(std::uint32_t address, std::uint32_t size) const {
    for (const PeSection& section : sections) {
        if (address >= section.address && address - section.address < section.size &&
            size <= section.size - (address - section.address))
            return std::size_t{section.offset} + (address - section.address);
    }
    return std::nullopt;
}

std::optional<PeImage> ReadPeImage(const Bytes& bytes) {
    const std::size_t coff = bytes.DoubleWord(kPeOffsetField);
    if (bytes.Part(0, 2) != "MZ" || bytes.Part(coff, 4) != std::string_view("PE\0\0", 4))
        return std::nullopt;
    const std::uint16_t sectionCount = bytes.Word(coff + 6);
    const std::size_t optional = coff + kCoffHeaderSize;
    const std::size_t optionalSize = bytes.Word(coff + 20);
    const std::uint16_t magic = bytes.Word(optional);
    if ((magic != kMagicPe32 && magic != kMagicPe32Plus) || sectionCount > kMaxSections)
        return std::nullopt;
    // The directories follow the fields whose width depends on the kind of image.
    const std::size_t directories = magic == kMagicPe32 ? 96 : 112;
    const std::size_t resource = directories + kResourceDirectory * 8;
    const std::size_t sectionTable = optional + optionalSize;
    if (resource + 8 > optionalSize || bytes.DoubleWord(optional + directories - 4) <= kResourceDirectory ||
        !bytes.Has(sectionTable, sectionCount * kSectionHeaderSize))
        return std::nullopt;
    PeImage image;
    image.resourceAddress = bytes.DoubleWord(optional + resource);
    image.resourceSize = bytes.DoubleWord(optional + resource + 4);
    image.sections = ReadSections(bytes, sectionTable, sectionCount);
    if (image.resourceAddress == 0)
        return std::nullopt;
    return image;
}

} // namespace base
