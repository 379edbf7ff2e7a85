#include "platform/StagedFile.h"

#include "platform/windows/Wide.h"
#include "platform/windows/files/TemporaryFile.h"
#include "platform/windows/paths/FolderNames.h"
#include "platform/windows/paths/WidePath.h"

#include <vector>

namespace platform {
namespace {

/// Deletes files that programs left behind when they were killed. A file that is still open cannot be opened
/// here for exclusive use.
void RemoveAbandoned(const std::wstring& folder) {
    std::vector<std::wstring> names;
    static_cast<void>(NamesIn(folder, names));
    for (const std::wstring& name : names) {
        if (IsTemporaryName(name))
            Handle(::CreateFileW(JoinWide(folder, name).c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                 FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    }
}

class HostStagedFile final : public StagedFile {
  public:
    HostStagedFile(TemporaryFile file, std::wstring target)
        : file_(std::move(file)), target_(std::move(target)) {}

    std::uint64_t Size() const override { return SizeOf(file_.File()); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(file_.File(), offset, buffer, count);
        return count;
    }

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        return WriteFullyAt(file_.File(), offset, data);
    }

    base::SystemError Flush() override {
        return ::FlushFileBuffers(file_.File().Get()) != 0 ? base::SystemError{} : LastError();
    }

    base::SystemError Commit() override { return file_.Commit(target_, Durability::kOnMedium); }

  private:
    TemporaryFile file_;
    std::wstring target_;
};

} // namespace

std::unique_ptr<StagedFile> StagedFile::Create(const std::string& folder, const std::string& name,
                                               base::SystemError& error) {
    const std::wstring host = WidePathOf(folder);
    error = {base::kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    error = {base::kErrorInvalidName};
    if (name.empty() || name.find_first_of("\\/") != std::string::npos)
        return nullptr;
    RemoveAbandoned(host);
    TemporaryFile file = TemporaryFile::StartIn(host);
    error = file.Error();
    if (error)
        return nullptr;
    return std::make_unique<HostStagedFile>(std::move(file), JoinWide(host, WideOf(name)));
}

} // namespace platform
