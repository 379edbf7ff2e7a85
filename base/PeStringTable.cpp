#include "base/PeStringTable.h"

#include "base/PeImage.h"
#include "base/Utf8.h"

namespace base {
namespace {

constexpr std::uint32_t kStringType = 6;
constexpr std::uint32_t kStringsPerBlock = 16;
constexpr std::size_t kDirectorySize = 16;
constexpr std::size_t kEntrySize = 8;
constexpr std::uint32_t kHighBit = 0x80000000; // in an id: it is a name; in an offset: it is a directory

/// One entry of a resource directory (PE format, ".rsrc" section).
struct Entry {
    std::uint32_t id;
    std::uint32_t offset; // from the start of the resources

    bool IsDirectory() const { return (offset & kHighBit) != 0; }

    std::uint32_t Directory() const { return offset & ~kHighBit; }
};

/// The entries of the directory at `offset` of the resources; none when it does not lie inside whole.
std::vector<Entry> ReadDirectory(const Bytes& resources, std::size_t offset) {
    std::vector<Entry> entries;
    const std::size_t count = std::size_t{resources.Word(offset + 12)} + resources.Word(offset + 14);
    if (!resources.Has(offset, kDirectorySize + count * kEntrySize))
        return entries;
    entries.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = offset + kDirectorySize + i * kEntrySize;
        entries.push_back({resources.DoubleWord(at), resources.DoubleWord(at + 4)});
    }
    return entries;
}

/// The first language of a block: any will do, since a library carries one.
std::optional<std::uint32_t> FirstLanguage(const Bytes& resources, const Entry& block) {
    const std::size_t at = std::size_t{block.Directory()} + kDirectorySize;
    if (!block.IsDirectory() || !resources.Has(at, kEntrySize))
        return std::nullopt;
    const Entry language{resources.DoubleWord(at), resources.DoubleWord(at + 4)};
    // The third level leads to data; a further directory is damage.
    if (language.IsDirectory() || !resources.Has(language.offset, 8))
        return std::nullopt;
    return language.offset;
}

std::string FromUtf16(const Bytes& units) {
    std::u16string text;
    for (std::size_t at = 0; at + 1 < units.Size(); at += 2)
        text.push_back(static_cast<char16_t>(units.Word(at)));
    return Utf8FromUtf16(text);
}

} // namespace

std::optional<PeStringTable> PeStringTable::Read(std::string imageBytes) {
    PeStringTable table;
    table.image_ = std::move(imageBytes);
    const Bytes bytes(table.image_);
    const std::optional<PeImage> image = ReadPeImage(bytes);
    if (!image)
        return std::nullopt;
    const std::optional<std::size_t> start = image->OffsetOf(image->resourceAddress, image->resourceSize);
    if (!start)
        return std::nullopt;
    const Bytes resources(bytes.Part(*start, image->resourceSize));
    for (const Entry& type : ReadDirectory(resources, 0)) {
        if (type.id != kStringType || !type.IsDirectory())
            continue;
        for (const Entry& block : ReadDirectory(resources, type.Directory())) {
            const std::optional<std::uint32_t> data = FirstLanguage(resources, block);
            if (!data)
                continue;
            const std::uint32_t size = resources.DoubleWord(*data + 4);
            if (const auto offset = image->OffsetOf(resources.DoubleWord(*data), size))
                table.blocks_.emplace(block.id, Block{*offset, size});
        }
        return table;
    }
    return std::nullopt;
}

std::string PeStringTable::Find(std::uint32_t id) const {
    const auto block = blocks_.find(id / kStringsPerBlock + 1);
    if (block == blocks_.end())
        return "";
    // Sixteen strings, each a count of UTF-16 units and the units.
    const Bytes bytes(Bytes(image_).Part(block->second.offset, block->second.size));
    std::size_t at = 0;
    for (std::uint32_t i = 0; i < id % kStringsPerBlock; ++i)
        at += 2 + std::size_t{bytes.Word(at)} * 2;
    return FromUtf16(Bytes(bytes.Part(at + 2, std::size_t{bytes.Word(at)} * 2)));
}

} // namespace base
