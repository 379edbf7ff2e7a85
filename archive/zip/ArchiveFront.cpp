#include "archive/zip/ArchiveFront.h"

#include "archive/zip/ArchiveState.h"
#include "archive/zip/ZipArchive.h"
#include "archive/zip/ZipRecords.h"
#include "base/LittleEndian.h"
#include "platform/FileReader.h"

#include <array>

namespace zip {

namespace {

constexpr std::uint16_t kZipStart = 0x4B50; // "PK"

/// The first two bytes of a file as a word; 0 when it has fewer or cannot be read.
std::uint16_t FirstWord(const std::string& fileName) {
    base::SystemError error;
    const auto file = platform::FileReader::Open(fileName, error);
    std::array<std::uint8_t, 2> bytes{};
    return file && file->ReadAt(0, bytes) == bytes.size() ? base::LoadLittle16(bytes.data())
                                                          : std::uint16_t{0};
}

} // namespace

Cls_GetFileType::Cls_GetFileType() = default;
Cls_GetFileType::~Cls_GetFileType() = default;

std::int16_t Cls_GetFileType::Get_Contents(const std::string& fileName) {
    State().ArchiveLoaded = 0;
    if (fileName.empty())
        return kStatusRefused;
    std::int16_t status = kStatusDone;
    if (FirstWord(fileName) == kZipStart) {
        if (!zip_)
            zip_ = std::make_unique<Cls_Zip>();
        reader_ = zip_.get();
        reader_->Get_Contents(fileName);
    } else {
        State().ArchiveFileCount = 0;
        status = kStatusNotZip;
    }
    if (State().ArchiveLoaded == 0)
        reader_ = nullptr;
    return status;
}

/// The reader to ask, or null while nothing is loaded.
const ArchiveReader* Cls_GetFileType::Reader() const {
    return State().ArchiveLoaded == 1 ? reader_ : nullptr;
}

std::int16_t Cls_GetFileType::UnPack(const EntrySelection& selection, const std::string& folder,
                                     base::WorkObserver* observer) {
    return Reader() ? reader_->UnPack(selection, folder, observer) : kStatusDone;
}

bool Cls_GetFileType::CanUnpack() const {
    return Reader() && Reader()->CanUnpack();
}

std::int32_t Cls_GetFileType::FileCount() const {
    return Reader() ? Reader()->FileCount() : 0;
}

std::string Cls_GetFileType::FileName(std::int32_t entry) const {
    return Reader() ? Reader()->FileName(entry) : std::string();
}

std::string Cls_GetFileType::CommentsFile(std::int32_t entry) const {
    return Reader() ? Reader()->CommentsFile(entry) : std::string();
}

std::string Cls_GetFileType::CommentsPack() const {
    return Reader() ? Reader()->CommentsPack() : std::string();
}

bool Cls_GetFileType::IsDir(std::int32_t entry) const {
    return Reader() && Reader()->IsDir(entry);
}

std::string Cls_GetFileType::Method(std::int32_t entry) const {
    return Reader() ? Reader()->Method(entry) : std::string();
}

std::int32_t Cls_GetFileType::CRC32(std::int32_t entry) const {
    return Reader() ? Reader()->CRC32(entry) : 0;
}

std::int32_t Cls_GetFileType::Compressed_Size(std::int32_t entry) const {
    return Reader() ? Reader()->Compressed_Size(entry) : 0;
}

std::int32_t Cls_GetFileType::UnCompressed_Size(std::int32_t entry) const {
    return Reader() ? Reader()->UnCompressed_Size(entry) : 0;
}

bool Cls_GetFileType::Encrypted(std::int32_t entry) const {
    return Reader() && Reader()->Encrypted(entry);
}

platform::SystemTime Cls_GetFileType::FileDateTime(std::int32_t entry) const {
    return Reader() ? Reader()->FileDateTime(entry) : kZeroDate;
}

std::string Cls_GetFileType::SystemMadeBy(std::int32_t entry) const {
    return Reader() ? Reader()->SystemMadeBy(entry) : std::string();
}

std::string Cls_GetFileType::VersionMadeBy(std::int32_t entry) const {
    return Reader() ? Reader()->VersionMadeBy(entry) : std::string();
}

std::string Cls_GetFileType::SystemNeeded(std::int32_t entry) const {
    return Reader() ? Reader()->SystemNeeded(entry) : std::string();
}

std::string Cls_GetFileType::VersionNeeded(std::int32_t entry) const {
    return Reader() ? Reader()->VersionNeeded(entry) : std::string();
}

} // namespace zip
