#include "platform/OutputFolder.h"

#include "platform/NewOutputFile.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/files/NewFile.h"
#include "platform/windows/files/OpenBelow.h"
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

/// Opens the folder itself. Other programs may rename or delete it; what is written goes where it goes.
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
    // Nearly always the name is free, and the file can have it at once.
    if (NewFile file = CreateFileIn(folder_, WideOf(name), error); !error)
        return WriteAndKeep(std::move(file), data, times);
    return error.code == base::kErrorFileExists ? ReplaceWhole(*this, name, data, times) : error;
}

std::unique_ptr<OutputFile> HostFolder::CreateFile(std::string_view name, base::SystemError& error) {
    error = {base::kErrorInvalidName};
    if (!IsPlainName(name))
        return nullptr;
    NewFile file = StartFileIn(folder_, error);
    return error ? nullptr : std::make_unique<NewOutputFile>(std::move(file), WideOf(name));
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
