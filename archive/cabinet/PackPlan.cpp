#include "archive/cabinet/PackPlan.h"

#include "archive/cabinet/CabinetFormat.h"
#include "base/LittleEndian.h"
#include "platform/Files.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace cabinet {
namespace {

/// Most raw bytes of a folder. Only a folder of a single file may be larger.
constexpr std::uint64_t kFolderTarget = 16u << 20;
constexpr std::size_t kMostFolders = kContinuedFromPrevious;

constexpr std::uint32_t kStoredAttributes = platform::kAttributeReadOnly | platform::kAttributeHidden |
                                            platform::kAttributeSystem | platform::kAttributeArchive;

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void Append16(std::vector<std::uint8_t>& bytes, std::uint16_t value) {
    bytes.resize(bytes.size() + 2);
    base::StoreLittle16(bytes.data() + bytes.size() - 2, value);
}

void Append32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    bytes.resize(bytes.size() + 4);
    base::StoreLittle32(bytes.data() + bytes.size() - 4, value);
}

void AppendHeader(std::vector<std::uint8_t>& bytes, const PackPlan& plan, std::uint32_t cabinetSize) {
    const std::size_t filesOffset = kHeaderSize + plan.folders.size() * kFolderSize;
    Append32(bytes, kSignature);
    Append32(bytes, 0);
    Append32(bytes, cabinetSize);
    Append32(bytes, 0);
    Append32(bytes, static_cast<std::uint32_t>(filesOffset));
    Append32(bytes, 0);
    Append16(bytes, 0x0103); // version 1.3
    Append16(bytes, static_cast<std::uint16_t>(plan.folders.size()));
    Append16(bytes, static_cast<std::uint16_t>(plan.files.size()));
    Append16(bytes, 0); // neither a set nor reserved areas
    Append32(bytes, 0); // set and number in it
}

void AppendFile(std::vector<std::uint8_t>& bytes, const PackEntry& file, std::uint64_t offset,
                std::size_t folder) {
    const StoredFields fields = StoredFieldsOf(file);
    Append32(bytes, static_cast<std::uint32_t>(file.identity.size));
    Append32(bytes, static_cast<std::uint32_t>(offset));
    Append16(bytes, static_cast<std::uint16_t>(folder));
    Append16(bytes, fields.date);
    Append16(bytes, fields.time);
    Append16(bytes, fields.attributes);
    bytes.insert(bytes.end(), file.name.begin(), file.name.end());
    bytes.push_back(0);
}

} // namespace

std::size_t PlannedFolder::BlockCount() const {
    return static_cast<std::size_t>((size + kBlockSize - 1) / kBlockSize);
}

CabReport PackPlan::Make(std::vector<PackEntry> found) {
    files = std::move(found);
    recordsSize = kHeaderSize;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::uint64_t fileSize = files[i].identity.size;
        const bool opensFolder = folders.empty() || (folders.back().size > 0 && fileSize > 0 &&
                                                     folders.back().size + fileSize > kFolderTarget);
        if (opensFolder) {
            folders.push_back({i, 0, 0});
            recordsSize += kFolderSize;
        }
        ++folders.back().fileCount;
        folders.back().size += fileSize;
        size += fileSize;
        recordsSize += kFileSize + files[i].name.size() + 1;
    }
    if (folders.size() > kMostFolders)
        return {CabFailure::kCabinetTooLarge, "", {}};
    return {};
}

StoredFields StoredFieldsOf(const PackEntry& entry) {
    StoredFields fields;
    const platform::SystemTime time =
        platform::FileTimeToSystemTime(platform::FileTimeToLocalFileTime(entry.identity.lastWrite));
    const auto word = [](int high, int middle, int low, int highShift) {
        return static_cast<std::uint16_t>(high << highShift | middle << 5 | low);
    };
    if (time.year < 1980) {
        fields.date = word(0, 1, 1, 9);
    } else if (time.year > 2107) {
        fields.date = word(2107 - 1980, 12, 31, 9);
        fields.time = word(23, 59, 29, 11);
    } else {
        fields.date = word(time.year - 1980, time.month, time.day, 9);
        fields.time = word(time.hour, time.minute, time.second / 2, 11);
    }
    fields.attributes = static_cast<std::uint16_t>(entry.attributes & kStoredAttributes);
    if (entry.executable)
        fields.attributes |= kAttributeExecute;
    if (!IsAscii(entry.name))
        fields.attributes |= kAttributeUtf8Name;
    return fields;
}

std::vector<std::uint8_t> RecordsOf(const PackPlan& plan, const std::vector<std::uint32_t>& dataOffsets,
                                    std::uint32_t cabinetSize) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(plan.recordsSize));
    AppendHeader(bytes, plan, cabinetSize);
    for (std::size_t i = 0; i < plan.folders.size(); ++i) {
        Append32(bytes, dataOffsets[i]);
        Append16(bytes, static_cast<std::uint16_t>(plan.folders[i].BlockCount()));
        Append16(bytes, kMszip);
    }
    for (std::size_t i = 0; i < plan.folders.size(); ++i) {
        const PlannedFolder& folder = plan.folders[i];
        std::uint64_t offset = 0;
        for (std::size_t f = folder.firstFile; f < folder.firstFile + folder.fileCount; ++f) {
            AppendFile(bytes, plan.files[f], offset, i);
            offset += plan.files[f].identity.size;
        }
    }
    return bytes;
}

} // namespace cabinet
