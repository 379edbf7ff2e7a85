#include "platform/OutputFolder.h"

#include "Entry.h"
#include "TemporaryFile.h"
#include "Wide.h"
#include "WidePath.h"

namespace platform {
namespace {

/// Whether `name` can be one component of a path and nothing more.
bool IsPlainName(std::string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\:\0"sv) == std::string_view::npos;
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

class HostOutputFile final : public OutputFile {
  public:
    HostOutputFile(TemporaryFile file, std::wstring target)
        : file_(std::move(file)), target_(std::move(target)) {}

    SystemError Write(std::span<const std::uint8_t> data) override { return WriteFully(file_.File(), data); }

    SystemError Commit(const FileTraits& traits) override {
        SetTimes(file_.File(), traits.times);
        return file_.Commit(target_, Durability::kLater);
    }

  private:
    TemporaryFile file_;
    std::wstring target_;
};

/// Holds the folder open without the right for others to rename or delete it, so that its path stays its own.
class HostFolder final : public OutputFolder {
  public:
    HostFolder(Handle folder, std::wstring path) : folder_(std::move(folder)), path_(std::move(path)) {}

    SystemError WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                          const std::optional<FileTimes>& times) override;
    std::unique_ptr<OutputFile> CreateFile(std::string_view name, SystemError& error) override;
    std::unique_ptr<OutputFolder> OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                               SystemError& error) override;

    /// Opens the folder at a host path; a link only where `followsLink`.
    static std::unique_ptr<OutputFolder> OpenAt(std::wstring path, bool followsLink, SystemError& error);

  private:
    Handle folder_;
    std::wstring path_;
};

SystemError HostFolder::WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                                  const std::optional<FileTimes>& times) {
    if (!IsPlainName(name))
        return {kErrorInvalidName};
    const std::wstring target = JoinWide(path_, WideOf(name));
    Handle file(::CreateFileW(target.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.IsOpen()) {
        const SystemError error = WriteFully(file, data);
        if (error)
            DeleteOpenFile(file);
        else
            SetTimes(file, times);
        return error;
    }
    if (const SystemError error = LastError(); error.code != kErrorFileExists)
        return error;
    SystemError error;
    const std::unique_ptr<OutputFile> replacement = CreateFile(name, error);
    if (replacement == nullptr)
        return error;
    error = replacement->Write(data);
    return error ? error : replacement->Commit({.times = times});
}

std::unique_ptr<OutputFile> HostFolder::CreateFile(std::string_view name, SystemError& error) {
    error = {kErrorInvalidName};
    if (!IsPlainName(name))
        return nullptr;
    TemporaryFile file = TemporaryFile::StartIn(path_);
    error = file.Error();
    if (error)
        return nullptr;
    return std::make_unique<HostOutputFile>(std::move(file), JoinWide(path_, WideOf(name)));
}

std::unique_ptr<OutputFolder> HostFolder::OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                                       SystemError& error) {
    error = {kErrorInvalidName};
    if (!IsPlainName(name) || !IsPlainName(nameWhenMade))
        return nullptr;
    std::unique_ptr<OutputFolder> below = OpenAt(JoinWide(path_, WideOf(name)), false, error);
    if (error.code != kErrorFileNotFound)
        return below;
    std::wstring made = JoinWide(path_, WideOf(nameWhenMade));
    if (::CreateDirectoryW(made.c_str(), nullptr) == 0 && ::GetLastError() != ERROR_ALREADY_EXISTS) {
        error = LastError();
        return nullptr;
    }
    return OpenAt(std::move(made), false, error);
}

std::unique_ptr<OutputFolder> HostFolder::OpenAt(std::wstring path, bool followsLink, SystemError& error) {
    const DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | (followsLink ? 0 : FILE_FLAG_OPEN_REPARSE_POINT);
    Handle folder(::CreateFileW(path.c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, flags, nullptr));
    error = folder.IsOpen() ? SystemError{} : LastError();
    if (error)
        return nullptr;
    const std::optional<HostEntry> entry = DescribeHandle(folder);
    if (!entry || !entry->IsFolder() || entry->IsLink()) {
        error = {kErrorFolderInvalid};
        return nullptr;
    }
    return std::make_unique<HostFolder>(std::move(folder), std::move(path));
}

} // namespace

std::unique_ptr<OutputFolder> OutputFolder::Open(const std::string& path, SystemError& error) {
    std::wstring host = WidePathOf(path);
    error = {kErrorPathNotFound};
    return host.empty() ? nullptr : HostFolder::OpenAt(std::move(host), true, error);
}

} // namespace platform
