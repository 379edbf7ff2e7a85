#include "platform/windows/files/NewFile.h"

#include "platform/windows/files/Entry.h"
#include "platform/windows/files/OpenBelow.h"
#include "platform/windows/files/OpenedFile.h"

#include <atomic>
#include <string_view>
#include <vector>
#include <winternl.h>

namespace platform {
namespace {

constexpr std::wstring_view kStart = L".pellarion-";
constexpr std::wstring_view kEnd = L".tmp";
constexpr std::size_t kPortion = 4U << 20;

/// A name that no other file has.
std::wstring TemporaryName() {
    static std::atomic<unsigned> counter{0};
    // The moment tells this name from one that a process of the same number left behind when the power
    // failed.
    return std::wstring(kStart) + std::to_wstring(::GetCurrentProcessId()) + L"-" +
           std::to_wstring(CurrentFileTime().ticks) + L"-" + std::to_wstring(counter++) + std::wstring(kEnd);
}

/// What stands in the folder under that name: a link itself.
std::optional<HostEntry> DescribeBelow(const Handle& folder, const EntryName& name) {
    base::SystemError error;
    return DescribeHandle(
        OpenBelow(folder, name, {FILE_READ_ATTRIBUTES, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error));
}

base::SystemError Flush(const Handle& file) {
    return ::FlushFileBuffers(file.Get()) != 0 ? base::SystemError{} : LastError();
}

} // namespace

NewFile StartFileIn(const Handle& folder, base::SystemError& error) {
    return CreateFileIn(folder, TemporaryName(), error);
}

NewFile CreateFileIn(const Handle& folder, const EntryName& name, base::SystemError& error) {
    // Others may read, rename and delete it, but not write to it.
    Handle file = OpenBelow(folder, name,
                            {GENERIC_READ | GENERIC_WRITE | DELETE, FILE_CREATE, FILE_NON_DIRECTORY_FILE,
                             FILE_SHARE_READ | FILE_SHARE_DELETE},
                            error);
    return error ? NewFile() : NewFile(std::make_unique<NewFile::Host>(std::move(file), folder));
}

void RemoveIfAbandoned(const Handle& folder, const EntryName& name) {
    base::SystemError error;
    // What is still open somewhere cannot be opened for exclusive use.
    if (name.starts_with(kStart) && name.ends_with(kEnd))
        OpenBelow(
            folder, name,
            {DELETE, FILE_OPEN, FILE_NON_DIRECTORY_FILE | FILE_OPEN_REPARSE_POINT | FILE_DELETE_ON_CLOSE, 0},
            error);
}

NewFile::Host::~Host() {
    if (!file.IsOpen())
        return;
    FILE_DISPOSITION_INFO disposition{TRUE};
    ::SetFileInformationByHandle(file.Get(), FileDispositionInfo, &disposition, sizeof disposition);
}

NewFile::NewFile() = default;

NewFile::NewFile(std::unique_ptr<Host> host) : host_(std::move(host)) {}

NewFile::~NewFile() = default;
NewFile::NewFile(NewFile&& other) noexcept = default;
NewFile& NewFile::operator=(NewFile&& other) noexcept = default;

base::SystemError NewFile::Write(std::span<const std::uint8_t> data) {
    return WriteFully(host_->file, data);
}

base::SystemError NewFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) {
    return WriteFullyAt(host_->file, offset, data);
}

std::size_t NewFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) const {
    std::size_t count = 0;
    ReadFullyAt(host_->file, offset, buffer, count);
    return count;
}

std::uint64_t NewFile::Size() const {
    return SizeOf(host_->file);
}

CopyResult NewFile::Fill(const OpenedFile& from, const std::function<bool(std::uint64_t)>& goOn) {
    std::vector<std::uint8_t> buffer(kPortion);
    std::uint64_t offset = 0;
    std::size_t count = 0;
    do {
        if (const base::SystemError error = ReadFullyAt(from.OfSystem().file, offset, buffer, count))
            return {error, false};
        if (const base::SystemError error = Write(std::span(buffer).first(count)))
            return {error, false};
        offset += count;
        if (count != 0 && !goOn(count))
            return {{}, true};
    } while (count == buffer.size());
    return {};
}

/// Who may use a file is a matter of its folder here; TakeName() keeps the marks.
void NewFile::KeepOwnership(const EntryName&) {}

void NewFile::KeepTraits(const OpenedFile& from, ReadOnlyMark readOnly) {
    KeepTimes(from.OfSystem().file, host_->file);
    if (readOnly == ReadOnlyMark::kKept)
        SetAttributes(host_->file, KeptAttributes(from.OfSystem().entry));
}

void NewFile::SetTraits(const FileTraits& traits) {
    if (!traits.times)
        return;
    const FILETIME created = HostTimeOf(traits.times->creation);
    const FILETIME accessed = HostTimeOf(traits.times->lastAccess);
    const FILETIME written = HostTimeOf(traits.times->lastWrite);
    ::SetFileTime(host_->file.Get(), &created, &accessed, &written);
}

base::SystemError NewFile::Sync() {
    return Flush(host_->file);
}

/// The system has no such call for an open file.
void NewFile::DropCache() {}

base::SystemError NewFile::TakeName(const EntryName& name, Replacing replacing, Durability durability) {
    const bool isLasting = durability == Durability::kOnMedium;
    if (const base::SystemError error = isLasting ? Flush(host_->file) : base::SystemError{})
        return error;
    const std::optional<HostEntry> before = DescribeBelow(host_->folder, name);
    if (replacing == Replacing::kReadOnlyToo) {
        if (before && (before->attributes & FILE_ATTRIBUTE_READONLY) != 0)
            MakeWritable(host_->folder, name);
    } else if (before) {
        if (IsProtected(before->attributes))
            return {base::kErrorAccessDenied};
        SetAttributes(host_->file, (before->attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) |
                                       FILE_ATTRIBUTE_ARCHIVE);
    }
    if (const base::SystemError error = MoveBelow(host_->file, host_->folder, name))
        return error;
    return Keep(durability);
}

base::SystemError NewFile::Keep(Durability durability) {
    // Under its final name, so that the name reaches the medium with the bytes.
    if (const base::SystemError error =
            durability == Durability::kOnMedium ? Flush(host_->file) : base::SystemError{})
        return error;
    host_->file.Close();
    return {};
}

void KeepTimes(const Handle& from, const Handle& to) {
    FILETIME created{};
    FILETIME accessed{};
    FILETIME written{};
    if (::GetFileTime(from.Get(), &created, &accessed, &written) != 0)
        ::SetFileTime(to.Get(), &created, &accessed, &written);
}

} // namespace platform
