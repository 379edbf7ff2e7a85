#include "platform/windows/files/FileCopy.h"

#include "platform/Files.h"
#include "platform/windows/files/OpenBelow.h"
#include "platform/windows/files/TemporaryFile.h"

#include <winternl.h>

namespace platform {

OpenedFile::OpenedFile() = default;

OpenedFile::OpenedFile(std::unique_ptr<Host> host) : host_(std::move(host)) {}

OpenedFile::~OpenedFile() = default;
OpenedFile::OpenedFile(OpenedFile&& other) noexcept = default;
OpenedFile& OpenedFile::operator=(OpenedFile&& other) noexcept = default;

base::SystemError OpenedFile::Read(std::span<std::uint8_t> buffer, std::size_t& count) {
    const base::SystemError error = ReadFullyAt(host_->file, host_->offset, buffer, count);
    host_->offset += count;
    return error;
}

FileCopy::Host::~Host() {
    if (file.IsOpen())
        DeleteOpenFile(file);
}

FileCopy::FileCopy() = default;

FileCopy::FileCopy(std::unique_ptr<Host> host) : host_(std::move(host)) {}

FileCopy::~FileCopy() = default;
FileCopy::FileCopy(FileCopy&& other) noexcept = default;
FileCopy& FileCopy::operator=(FileCopy&& other) noexcept = default;

std::uint32_t KeptAttributes(const HostEntry& entry) {
    return entry.attributes & (kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeArchive);
}

void SetAttributes(const Handle& file, std::uint32_t attributes) {
    FILE_BASIC_INFO basic{}; // times of zero stay, and so would attributes of zero
    basic.FileAttributes = attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
    ::SetFileInformationByHandle(file.Get(), FileBasicInfo, &basic, sizeof basic);
}

void MakeWritable(const Handle& folder, const EntryName& name) {
    base::SystemError error;
    const Handle entry =
        OpenBelow(folder, name, {FILE_WRITE_ATTRIBUTES, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error);
    if (!error)
        SetAttributes(entry, FILE_ATTRIBUTE_NORMAL);
}

CopyResult FileCopy::Fill(const OpenedFile& from, const std::function<bool(std::uint64_t)>& goOn) {
    return CopyContent(from.OfSystem().file, host_->file, goOn);
}

void FileCopy::KeepTraits(const OpenedFile& from) {
    KeepTimes(from.OfSystem().file, host_->file);
    SetAttributes(host_->file, KeptAttributes(from.OfSystem().entry));
}

base::SystemError FileCopy::Sync() {
    return ::FlushFileBuffers(host_->file.Get()) != 0 ? base::SystemError{} : LastError();
}

base::SystemError FileCopy::TakeName(const EntryName& name) {
    base::SystemError error;
    const std::optional<HostEntry> before = DescribeHandle(
        OpenBelow(host_->folder, name, {FILE_READ_ATTRIBUTES, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error));
    // The person has chosen to replace it.
    if (before && (before->attributes & kAttributeReadOnly) != 0)
        MakeWritable(host_->folder, name);
    error = MoveBelow(host_->file, host_->folder, name);
    if (!error)
        host_->file.Close();
    return error;
}

} // namespace platform
