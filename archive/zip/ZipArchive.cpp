#include "archive/zip/ZipArchive.h"

#include "app/Messages.h"
#include "archive/zip/ArchiveState.h"
#include "archive/zip/EntryFile.h"
#include "archive/zip/EntryNames.h"
#include "archive/zip/ZipExtraction.h"
#include "platform/FileReader.h"

namespace zip {

std::int16_t Cls_Zip::Get_Contents(const std::string& fileName) {
    ArchiveState& state = State();
    state.ArchivePath = fileName;
    state.ArchiveComment.clear();
    state.ArchiveLoaded = 0;
    state.ArchiveFileCount = 0;
    directory_.reset();
    base::SystemError error;
    const auto file = platform::FileReader::Open(fileName, error);
    if (!file)
        return kStatusDone;
    if (const auto directory = ReadZipDirectory(*file)) {
        directory_ = directory;
        state.ArchiveFileCount = static_cast<std::int32_t>(directory->entries.size());
        state.ArchiveComment = directory->comment;
        state.ArchiveLoaded = 1;
    }
    return kStatusDone;
}

std::int16_t Cls_Zip::UnPack(const EntrySelection& selection, const std::string& folder,
                             base::WorkObserver* observer) {
    const auto directory = directory_;
    const auto count = static_cast<std::size_t>(FileCount());
    if (count == 0 || selection.size() != count + 1 || !directory || directory->entries.size() != count)
        return kStatusNothing;
    base::SystemError error;
    const auto file = platform::FileReader::Open(State().ArchivePath, error);
    if (!file) {
        app::ShowError(error.Description());
        return kStatusNothing;
    }
    const codec::ByteBuffer::ReuseScope reuse;
    State().UnpackBuffer.Clear();
    return ZipExtraction(*file, directory->entries, folder, observer).Run(selection);
}

std::int32_t Cls_Zip::FileCount() const {
    return State().ArchiveFileCount;
}

std::string Cls_Zip::CommentsPack() const {
    return State().ArchiveComment;
}

bool Cls_Zip::EntryIndexInvalid(std::int32_t entry) const {
    return entry < 1 || entry > State().ArchiveFileCount || State().ArchiveLoaded == 0 || !directory_ ||
           static_cast<std::size_t>(entry) > directory_->entries.size();
}

const ArchiveEntry* Cls_Zip::Find(std::int32_t entry) const {
    return EntryIndexInvalid(entry) ? nullptr : &directory_->entries[static_cast<std::size_t>(entry) - 1];
}

std::string Cls_Zip::FileName(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? std::string(found->fileName) : std::string();
}

std::string Cls_Zip::CommentsFile(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? std::string(found->fileComment) : std::string();
}

bool Cls_Zip::IsDir(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found && IsFolderEntry(*found);
}

std::string Cls_Zip::Method(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? std::string(MethodName(found->method)) : std::string();
}

std::int32_t Cls_Zip::CRC32(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? static_cast<std::int32_t>(found->crc) : 0;
}

std::int32_t Cls_Zip::Compressed_Size(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? found->compressedSize : 0;
}

std::int32_t Cls_Zip::UnCompressed_Size(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? found->uncompressedSize : 0;
}

bool Cls_Zip::Encrypted(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found && (found->flags & 1) != 0;
}

platform::SystemTime Cls_Zip::FileDateTime(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? DosDateTimeToDate(found->date, found->time) : kZeroDate;
}

std::string Cls_Zip::SystemMadeBy(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? std::string(HostSystemName(found->versionMadeBy)) : std::string();
}

std::string Cls_Zip::VersionMadeBy(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? VersionText(found->versionMadeBy) : std::string();
}

std::string Cls_Zip::SystemNeeded(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? std::string(HostSystemName(found->versionNeeded)) : std::string();
}

std::string Cls_Zip::VersionNeeded(std::int32_t entry) const {
    const ArchiveEntry* found = Find(entry);
    return found ? VersionText(found->versionNeeded) : std::string();
}

} // namespace zip
