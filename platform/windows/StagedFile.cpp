#include "StagedFile.h"

#include "TemporaryFile.h"
#include "Wide.h"
#include "WidePath.h"

namespace platform {
namespace {

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

    SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        return WriteFullyAt(file_.File(), offset, data);
    }

    SystemError Flush() override {
        return ::FlushFileBuffers(file_.File().Get()) != 0 ? SystemError{} : LastError();
    }

    SystemError Commit() override { return file_.Commit(target_, Durability::kOnMedium); }

  private:
    TemporaryFile file_;
    std::wstring target_;
};

} // namespace

std::unique_ptr<StagedFile> StagedFile::Create(const std::string& folder, const std::string& name,
                                               SystemError& error) {
    const std::wstring host = WidePathOf(folder);
    error = {kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    error = {kErrorInvalidName};
    if (name.empty() || name.find_first_of("\\/") != std::string::npos)
        return nullptr;
    TemporaryFile file = TemporaryFile::StartIn(host);
    error = file.Error();
    if (error)
        return nullptr;
    return std::make_unique<HostStagedFile>(std::move(file), JoinWide(host, WideOf(name)));
}

} // namespace platform
