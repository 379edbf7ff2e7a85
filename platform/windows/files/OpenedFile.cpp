#include "platform/windows/files/OpenedFile.h"

#include "platform/Files.h"
#include "platform/windows/files/OpenBelow.h"

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

} // namespace platform
