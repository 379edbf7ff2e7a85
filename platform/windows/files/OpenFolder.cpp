#include "platform/OpenFolder.h"

#include "platform/windows/Wide.h"
#include "platform/windows/files/NewFile.h"
#include "platform/windows/files/OpenBelow.h"
#include "platform/windows/files/OpenedFile.h"
#include "platform/windows/paths/WidePath.h"

#include <algorithm>
#include <cstring>
#include <winternl.h>

namespace platform {
namespace {

constexpr base::SystemError kNoSuchPath{base::kErrorPathNotFound};
constexpr DWORD kFolderAccess = FILE_LIST_DIRECTORY | FILE_TRAVERSE | FILE_READ_ATTRIBUTES;

ULONG NoFollow(Links links) {
    return links == Links::kThemselves ? FILE_OPEN_REPARSE_POINT : 0;
}

EntryStatus StatusFrom(const HostEntry& entry) {
    EntryKind kind = entry.IsFolder() ? EntryKind::kFolder : EntryKind::kFile;
    if (entry.IsLink())
        kind = EntryKind::kLink;
    return {kind, entry.identity, entry.attributes, false};
}

Handle OpenPath(const std::wstring& path, DWORD flags) {
    return Handle(::CreateFileW(path.c_str(), kFolderAccess, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

/// A folder must be one, and not a link to one.
base::SystemError CheckFolder(const Handle& folder) {
    const std::optional<HostEntry> entry = DescribeHandle(folder);
    if (!entry)
        return LastError();
    if (entry->IsLink())
        return {base::kErrorBadPathName};
    return entry->IsFolder() ? base::SystemError{} : base::SystemError{base::kErrorFolderInvalid};
}

OpenedFile OpenToRead(const Handle& folder, std::wstring_view name, ULONG options, base::SystemError& error) {
    Handle file =
        OpenBelow(folder, name, {GENERIC_READ, FILE_OPEN, FILE_NON_DIRECTORY_FILE | options}, error);
    const std::optional<HostEntry> entry = DescribeHandle(file);
    if (!error && !entry)
        error = LastError();
    return error ? OpenedFile() : OpenedFile(std::make_unique<OpenedFile::Host>(std::move(file), *entry));
}

/// Appends the names of one answer of the system, which is a chain of records.
void AppendNames(const std::uint8_t* records, std::vector<EntryName>& names) {
    FILE_ID_BOTH_DIR_INFO record{};
    do {
        std::memcpy(&record, records, offsetof(FILE_ID_BOTH_DIR_INFO, FileName));
        EntryName name(record.FileNameLength / sizeof(wchar_t), L'\0');
        std::memcpy(name.data(), records + offsetof(FILE_ID_BOTH_DIR_INFO, FileName), record.FileNameLength);
        if (name != L"." && name != L"..")
            names.push_back(std::move(name));
        records += record.NextEntryOffset;
    } while (record.NextEntryOffset != 0);
}

} // namespace

std::string TextOf(const EntryName& name) {
    return Utf8OfWide(name);
}

EntryName EntryNameOf(std::string_view text) {
    return WideOf(text);
}

struct OpenFolder::Host {
    explicit Host(Handle opened, std::wstring openedBy = {})
        : folder(std::move(opened)), path(std::move(openedBy)) {}

    Handle folder;
    std::wstring path; ///< that it was opened by; empty for one that was reached through another
};

OpenFolder::OpenFolder() = default;

OpenFolder::OpenFolder(std::unique_ptr<Host> host) : host_(std::move(host)) {}

OpenFolder::~OpenFolder() = default;
OpenFolder::OpenFolder(OpenFolder&& other) noexcept = default;
OpenFolder& OpenFolder::operator=(OpenFolder&& other) noexcept = default;

OpenFolder OpenFolder::At(const std::string& path, Links links, base::SystemError& error) {
    std::wstring host = WidePathOf(path);
    error = kNoSuchPath;
    if (host.empty())
        return {};
    Handle folder = OpenPath(host, links == Links::kThemselves ? FILE_FLAG_OPEN_REPARSE_POINT : 0);
    error = folder.IsOpen() ? CheckFolder(folder) : LastError();
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder), std::move(host)));
}

namespace {

/// Opens the folder that holds the entry at a host path.
OpenFolder OpenHolding(const std::wstring& host, EntryName& name, base::SystemError& error) {
    const std::size_t separator = host.find_last_of(L'\\');
    error = kNoSuchPath;
    if (separator == std::wstring::npos || separator + 1 == host.size())
        return {};
    name = host.substr(separator + 1);
    std::wstring parent = host.substr(0, separator + 1);
    Handle folder = OpenPath(parent, 0);
    error = folder.IsOpen() ? base::SystemError{} : LastError();
    // What is missing is a part of the path, not the entry itself.
    if (error.code == base::kErrorFileNotFound)
        error = kNoSuchPath;
    return error ? OpenFolder()
                 : OpenFolder(std::make_unique<OpenFolder::Host>(std::move(folder), std::move(parent)));
}

/// Where the link at `host` leads; the path itself when it is no link or leads nowhere.
std::wstring LinkTarget(const std::wstring& host) {
    const std::optional<HostEntry> entry = DescribeLink(host);
    if (!entry || !entry->IsLink())
        return host;
    const Handle target = OpenToAsk(host);
    std::wstring path(::GetFinalPathNameByHandleW(target.Get(), nullptr, 0, 0), L'\0');
    const DWORD length =
        ::GetFinalPathNameByHandleW(target.Get(), path.data(), static_cast<DWORD>(path.size()), 0);
    if (length == 0 || length >= path.size())
        return host;
    path.resize(length);
    return path;
}

} // namespace

OpenFolder OpenFolder::Holding(const std::string& path, EntryName& name, base::SystemError& error) {
    return OpenHolding(WidePathOf(path), name, error);
}

OpenFolder OpenFolder::HoldingTarget(const std::string& path, EntryName& name, base::SystemError& error) {
    return OpenHolding(LinkTarget(WidePathOf(path)), name, error);
}

bool OpenFolder::IsInPlace() const {
    const std::optional<HostEntry> here = DescribeHandle(host_->folder);
    const std::optional<HostEntry> there = DescribeTarget(host_->path);
    return here && there && here->IsSameFile(*there);
}

std::optional<EntryStatus> OpenFolder::Status() const {
    const std::optional<HostEntry> entry = DescribeHandle(host_->folder);
    return entry ? std::optional(StatusFrom(*entry)) : std::nullopt;
}

base::SystemError OpenFolder::Names(std::vector<EntryName>& names) const {
    // Opened anew, since a handle that has been listed once may keep what it found then.
    base::SystemError error;
    const Handle listing =
        OpenBelow(host_->folder, L"", {FILE_LIST_DIRECTORY, FILE_OPEN, FILE_DIRECTORY_FILE}, error);
    if (error)
        return error;
    std::vector<std::uint64_t> answer(8192); // the records in it are aligned
    FILE_INFO_BY_HANDLE_CLASS step = FileIdBothDirectoryRestartInfo;
    while (::GetFileInformationByHandleEx(listing.Get(), step, answer.data(),
                                          static_cast<DWORD>(answer.size() * sizeof(std::uint64_t))) != 0) {
        AppendNames(reinterpret_cast<const std::uint8_t*>(answer.data()), names);
        step = FileIdBothDirectoryInfo;
    }
    if (::GetLastError() != ERROR_NO_MORE_FILES)
        error = LastError();
    std::ranges::sort(names);
    return error;
}

std::optional<EntryStatus> OpenFolder::StatusOf(const EntryName& name, Links links,
                                                base::SystemError& error) const {
    const Handle opened =
        OpenBelow(host_->folder, name, {FILE_READ_ATTRIBUTES, FILE_OPEN, NoFollow(links)}, error);
    if (error)
        return std::nullopt;
    const std::optional<HostEntry> entry = DescribeHandle(opened);
    if (entry)
        return StatusFrom(*entry);
    error = LastError();
    return std::nullopt;
}

/// A medium that is mounted in a folder is a link there.
bool OpenFolder::IsMountPoint(const EntryName&) const {
    return false;
}

OpenFolder OpenFolder::OpenSubfolder(const EntryName& name, Links links, base::SystemError& error) const {
    Handle folder = OpenBelow(host_->folder, name,
                              {kFolderAccess, FILE_OPEN, FILE_DIRECTORY_FILE | NoFollow(links)}, error);
    if (!error)
        error = CheckFolder(folder);
    return error ? OpenFolder() : OpenFolder(std::make_unique<Host>(std::move(folder), L""));
}

base::SystemError OpenFolder::Remove(const EntryName& name, const EntryStatus& status) const {
    if ((status.attributes & FILE_ATTRIBUTE_READONLY) != 0)
        MakeWritable(host_->folder, name);
    base::SystemError error;
    Handle entry = OpenBelow(host_->folder, name, {DELETE, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error);
    if (error)
        return error;
    FILE_DISPOSITION_INFO disposition{TRUE};
    return ::SetFileInformationByHandle(entry.Get(), FileDispositionInfo, &disposition, sizeof disposition) !=
                   0
               ? base::SystemError{}
               : LastError();
}

OpenedFile OpenFolder::OpenFile(const EntryName& name, base::SystemError& error) const {
    return OpenToRead(host_->folder, name, 0, error);
}

OpenedFile OpenFolder::OpenFileBelow(std::string_view path, base::SystemError& error) const {
    return OpenToRead(host_->folder, WideOf(path), FILE_OPEN_REPARSE_POINT, error);
}

std::optional<EntryStatus> OpenedFile::Status() const {
    const std::optional<HostEntry> entry = DescribeHandle(host_->file);
    return entry ? std::optional(StatusFrom(*entry)) : std::nullopt;
}

base::SystemError OpenFolder::MakeFolder(const EntryName& name) const {
    base::SystemError error;
    OpenBelow(host_->folder, name, {FILE_READ_ATTRIBUTES, FILE_CREATE, FILE_DIRECTORY_FILE}, error);
    return error;
}

void OpenFolder::KeepTraits(const EntryName& name, const OpenFolder& from) const {
    base::SystemError error;
    const Handle made =
        OpenBelow(host_->folder, name, {FILE_WRITE_ATTRIBUTES, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error);
    const std::optional<HostEntry> source = DescribeHandle(from.host_->folder);
    if (error || !source)
        return;
    KeepTimes(from.host_->folder, made);
    SetAttributes(made, KeptAttributes(*source));
}

NewFile OpenFolder::StartFile(NewFileUse use, base::SystemError& error) const {
    if (use == NewFileUse::kStaged) {
        std::vector<EntryName> names;
        static_cast<void>(Names(names));
        for (const EntryName& name : names)
            RemoveIfAbandoned(host_->folder, name);
    }
    return StartFileIn(host_->folder, error);
}

NewFile OpenFolder::CreateFile(const EntryName& name, base::SystemError& error) const {
    return CreateFileIn(host_->folder, name, error);
}

} // namespace platform
