#include "platform/OutputFolder.h"

#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/files/OpenBelow.h"
#include "platform/windows/files/TemporaryFile.h"
#include "platform/windows/paths/WidePath.h"

#include <algorithm>
#include <winternl.h>

namespace platform {
namespace {

/// Whether `name` can be one component of a path and nothing more. What no file can be called is refused at
/// once, not when the file that is to have the name is complete.
bool IsPlainName(std::string_view name) {
    const auto isLetter = [](char c) {
        return static_cast<unsigned char>(c) >= 0x20 &&
               std::string_view("/\\:*?\"<>|").find(c) == std::string_view::npos;
    };
    return !name.empty() && name != "." && name != ".." && std::ranges::all_of(name, isLetter);
}

/// Times that cannot be set are no failure.
void SetTimes(const Handle& file, const std::optional<FileTimes>& times) {
    if (!times)
        return;
    const FILETIME created = HostTimeOf(times->creation);
    const FILETIME accessed = HostTimeOf(times->lastAccess);
    const FILETIME written = HostTimeOf(times->lastWrite);
    ::SetFileTime(file.Get(), &created, &accessed, &written);
}

/// What stands in the folder under that name: a link itself.
std::optional<HostEntry> DescribeBelow(const Handle& folder, std::wstring_view name) {
    base::SystemError error;
    return DescribeHandle(
        OpenBelow(folder, name, {FILE_READ_ATTRIBUTES, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error));
}

/// Makes a file in the folder; it can be deleted and renamed while it is open.
Handle CreateBelow(const Handle& folder, std::wstring_view name, base::SystemError& error) {
    return OpenBelow(folder, name, {GENERIC_WRITE | DELETE, FILE_CREATE, FILE_NON_DIRECTORY_FILE}, error);
}

class HostOutputFile final : public OutputFile {
  public:
    HostOutputFile(Handle file, const Handle& folder, std::wstring name)
        : file_(std::move(file)), folder_(folder), name_(std::move(name)) {}

    ~HostOutputFile() override {
        if (file_.IsOpen())
            DeleteOpenFile(file_);
    }

    HostOutputFile(const HostOutputFile&) = delete;
    HostOutputFile& operator=(const HostOutputFile&) = delete;

    base::SystemError Write(std::span<const std::uint8_t> data) override { return WriteFully(file_, data); }

    base::SystemError Commit(const FileTraits& traits) override {
        const std::optional<HostEntry> before = DescribeBelow(folder_, name_);
        if (before && IsProtected(before->attributes))
            return {base::kErrorAccessDenied};
        SetTimes(file_, traits.times);
        if (before)
            KeepAttributes(file_, before->attributes);
        const base::SystemError error = MoveBelow(file_, folder_, name_);
        if (!error)
            file_.Close();
        return error;
    }

  private:
    Handle file_;
    const Handle& folder_;
    std::wstring name_;
};

/// Holds the folder itself: others may rename or delete it, and what is written goes where it goes.
class HostFolder final : public OutputFolder {
  public:
    explicit HostFolder(Handle folder) : folder_(std::move(folder)) {}

    base::SystemError WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                                const std::optional<FileTimes>& times) override;
    std::unique_ptr<OutputFile> CreateFile(std::string_view name, base::SystemError& error) override;
    std::unique_ptr<OutputFolder> OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                               base::SystemError& error) override;

  private:
    Handle folder_;
};

base::SystemError HostFolder::WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                                        const std::optional<FileTimes>& times) {
    if (!IsPlainName(name))
        return {base::kErrorInvalidName};
    base::SystemError error;
    if (Handle file = CreateBelow(folder_, WideOf(name), error); file.IsOpen()) {
        error = WriteFully(file, data);
        if (error)
            DeleteOpenFile(file);
        else
            SetTimes(file, times);
        return error;
    }
    if (error.code != base::kErrorFileExists)
        return error;
    const std::unique_ptr<OutputFile> replacement = CreateFile(name, error);
    if (replacement == nullptr)
        return error;
    error = replacement->Write(data);
    return error ? error : replacement->Commit({.times = times});
}

std::unique_ptr<OutputFile> HostFolder::CreateFile(std::string_view name, base::SystemError& error) {
    error = {base::kErrorInvalidName};
    if (!IsPlainName(name))
        return nullptr;
    Handle file = CreateBelow(folder_, TemporaryName(), error);
    return error ? nullptr : std::make_unique<HostOutputFile>(std::move(file), folder_, WideOf(name));
}

constexpr DWORD kFolderAccess = FILE_LIST_DIRECTORY | FILE_TRAVERSE | FILE_READ_ATTRIBUTES;

/// The opened folder; a link is not one.
std::unique_ptr<OutputFolder> FolderOf(Handle folder, base::SystemError& error) {
    const std::optional<HostEntry> entry = DescribeHandle(folder);
    error = entry && entry->IsFolder() && !entry->IsLink() ? base::SystemError{}
                                                           : base::SystemError{base::kErrorPathNotFound};
    return error ? nullptr : std::make_unique<HostFolder>(std::move(folder));
}

std::unique_ptr<OutputFolder> HostFolder::OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                                       base::SystemError& error) {
    error = {base::kErrorInvalidName};
    if (!IsPlainName(name) || !IsPlainName(nameWhenMade))
        return nullptr;
    Handle below =
        OpenBelow(folder_, WideOf(name), {kFolderAccess, FILE_OPEN, FILE_OPEN_REPARSE_POINT}, error);
    if (error.code == base::kErrorFileNotFound)
        below =
            OpenBelow(folder_, WideOf(nameWhenMade),
                      {kFolderAccess, FILE_OPEN_IF, FILE_DIRECTORY_FILE | FILE_OPEN_REPARSE_POINT}, error);
    return error ? nullptr : FolderOf(std::move(below), error);
}

} // namespace

std::size_t OutputFolder::MostOpen() {
    return 4096; // far below what the system grants
}

std::unique_ptr<OutputFolder> OutputFolder::Open(const std::string& path, base::SystemError& error) {
    const std::wstring host = WidePathOf(path);
    error = {base::kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    Handle folder(::CreateFileW(host.c_str(), kFolderAccess, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    error = folder.IsOpen() ? base::SystemError{} : LastError();
    return error ? nullptr : FolderOf(std::move(folder), error);
}

} // namespace platform
