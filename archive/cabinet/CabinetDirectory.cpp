#include "archive/cabinet/CabinetDirectory.h"

#include "archive/cabinet/CabinetFormat.h"
#include "base/Letters.h"
#include "base/LittleEndian.h"
#include "base/Utf8.h"
#include "platform/BufferedInput.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <utility>

namespace cabinet {
namespace {

constexpr base::SystemError kBad{base::kErrorInvalidData};

std::size_t HashOf(std::string_view name) {
    return std::hash<std::string>{}(base::ToUpper(name));
}

/// Flagged names are UTF-8, with U+FFFD for each byte that is none: unlike "?" it can be part of a file's
/// name. For all others the code page decides.
std::string NameOf(const std::string& stored, std::uint16_t attributes) {
    if ((attributes & kAttributeUtf8Name) == 0)
        return platform::AnsiToUtf8(stored);
    std::string name;
    for (std::size_t at = 0; at < stored.size();) {
        const char32_t point = base::NextCodePoint(stored, at);
        base::AppendUtf8(name, point == base::kNotUtf8 ? U'\uFFFD' : point);
    }
    return name;
}

} // namespace

std::uint64_t Folder::Capacity() const {
    return static_cast<std::uint64_t>(blockCount) * kBlockSize;
}

/// Reads the records one after another.
class CabinetDirectory::Reader {
  public:
    Reader(platform::FileReader& file, CabinetDirectory& directory) : input_(file), directory_(directory) {}

    base::SystemError ReadAll() {
        if (const base::SystemError error = ReadHeader())
            return error;
        for (std::size_t i = 0; i < folderCount_; ++i) {
            if (const base::SystemError error = ReadFolder())
                return error;
        }
        input_.Seek(filesOffset_);
        for (std::size_t i = 0; i < fileCount_; ++i) {
            if (const base::SystemError error = ReadFile())
                return error;
        }
        return {};
    }

  private:
    base::SystemError ReadHeader();
    base::SystemError ReadFolder();
    base::SystemError ReadFile();
    base::SystemError ReadString(std::string& text, bool mayBeEmpty);
    base::SystemError Place(std::uint16_t folder, Entry& entry) const;

    platform::BufferedInput input_;
    CabinetDirectory& directory_;
    std::size_t folderCount_ = 0;
    std::size_t fileCount_ = 0;
    std::uint32_t filesOffset_ = 0;
    std::size_t folderReserve_ = 0;
};

base::SystemError CabinetDirectory::Reader::ReadHeader() {
    std::array<std::uint8_t, kHeaderSize> header;
    if (const base::SystemError error = input_.Read(header))
        return error;
    if (base::LoadLittle32(header.data()) != kSignature)
        return kBad;
    filesOffset_ = base::LoadLittle32(header.data() + 16);
    folderCount_ = base::LoadLittle16(header.data() + 26);
    fileCount_ = base::LoadLittle16(header.data() + 28);
    const std::uint16_t flags = base::LoadLittle16(header.data() + 30);
    directory_.setId_ = base::LoadLittle16(header.data() + 32);
    directory_.cabinetNumber_ = base::LoadLittle16(header.data() + 34);
    directory_.hasNext_ = (flags & kHasNext) != 0;
    if (folderCount_ == 0 || fileCount_ == 0)
        return kBad;

    if ((flags & kHasReserve) != 0) {
        std::array<std::uint8_t, kReserveSizesSize> sizes;
        if (const base::SystemError error = input_.Read(sizes))
            return error;
        folderReserve_ = sizes[2];
        directory_.dataReserve_ = sizes[3];
        input_.Seek(input_.Position() + base::LoadLittle16(sizes.data()));
    }
    std::string ignored;
    if ((flags & kHasPrevious) != 0) {
        for (const bool mayBeEmpty : {false, true}) {
            if (const base::SystemError error = ReadString(ignored, mayBeEmpty))
                return error;
        }
    }
    if ((flags & kHasNext) != 0) {
        if (const base::SystemError error = ReadString(directory_.nextCabinet_, false))
            return error;
        if (const base::SystemError error = ReadString(directory_.nextDisk_, true))
            return error;
    }
    return {};
}

base::SystemError CabinetDirectory::Reader::ReadFolder() {
    std::array<std::uint8_t, kFolderSize> record;
    if (const base::SystemError error = input_.Read(record))
        return error;
    input_.Seek(input_.Position() + folderReserve_);
    directory_.folders_.push_back({base::LoadLittle32(record.data()), base::LoadLittle16(record.data() + 4),
                                   base::LoadLittle16(record.data() + 6)});
    return {};
}

base::SystemError CabinetDirectory::Reader::ReadFile() {
    std::array<std::uint8_t, kFileSize> record;
    if (const base::SystemError error = input_.Read(record))
        return error;
    Entry entry;
    entry.size = base::LoadLittle32(record.data());
    entry.offset = base::LoadLittle32(record.data() + 4);
    entry.date = base::LoadLittle16(record.data() + 10);
    entry.time = base::LoadLittle16(record.data() + 12);
    entry.attributes = base::LoadLittle16(record.data() + 14);
    if (const base::SystemError error = Place(base::LoadLittle16(record.data() + 8), entry))
        return error;
    std::string stored;
    if (const base::SystemError error = ReadString(stored, false))
        return error;
    entry.name = NameOf(stored, entry.attributes);
    directory_.memory_ += sizeof(Entry) + entry.name.capacity() + sizeof(Link) + sizeof(std::uint32_t);
    directory_.entries_.push_back(std::move(entry));
    return {};
}

/// Finds the folder of an entry by the number that it has stored.
base::SystemError CabinetDirectory::Reader::Place(std::uint16_t folder, Entry& entry) const {
    entry.continuedFromPrevious = folder == kContinuedFromPrevious || folder == kContinuedBoth;
    entry.continuesInNext = folder == kContinuedToNext || folder == kContinuedBoth;
    if (entry.continuedFromPrevious)
        entry.folder = 0;
    else if (entry.continuesInNext)
        entry.folder = static_cast<std::uint16_t>(folderCount_ - 1);
    else if (folder < folderCount_)
        entry.folder = folder;
    else
        return kBad;
    return {};
}

base::SystemError CabinetDirectory::Reader::ReadString(std::string& text, bool mayBeEmpty) {
    std::array<std::uint8_t, kLongestName + 1> bytes;
    const std::uint64_t start = input_.Position();
    const std::size_t count = input_.ReadSome(bytes);
    const auto end = std::find(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count), 0);
    const auto length = static_cast<std::size_t>(end - bytes.begin());
    if (length == count)
        return {input_.Faulted() ? base::kErrorReadFault : base::kErrorInvalidData};
    if (length == 0 && !mayBeEmpty)
        return kBad;
    text.assign(bytes.begin(), end);
    input_.Seek(start + length + 1);
    return {};
}

base::SystemError CabinetDirectory::Read(platform::FileReader& file) {
    *this = {};
    Reader reader(file, *this);
    if (const base::SystemError error = reader.ReadAll())
        return error;
    MakeIndex();
    return {};
}

void CabinetDirectory::MakeIndex() {
    firstLinks_.resize(std::bit_ceil(entries_.size()));
    links_.resize(entries_.size());
    for (std::size_t i = entries_.size(); i-- > 0;) {
        const std::size_t hash = HashOf(entries_[i].name);
        std::uint32_t& first = firstLinks_[hash % firstLinks_.size()];
        links_[i] = {hash, std::exchange(first, static_cast<std::uint32_t>(i + 1))};
    }
}

std::vector<std::size_t> CabinetDirectory::Find(std::string_view name) const {
    std::vector<std::size_t> found;
    const std::size_t hash = HashOf(name);
    for (std::size_t at = firstLinks_[hash % firstLinks_.size()]; at != 0; at = links_[at - 1].next) {
        if (links_[at - 1].hash == hash && base::EqualsNoCase(entries_[at - 1].name, name))
            found.push_back(at - 1);
    }
    return found;
}

} // namespace cabinet
