#include "platform/StagedFile.h"

#include "platform/OpenFolder.h"

namespace platform {
namespace {

class StagedInFolder final : public StagedFile {
  public:
    StagedInFolder(OpenFolder folder, NewFile file, EntryName name)
        : folder_(std::move(folder)), file_(std::move(file)), name_(std::move(name)) {}

    std::uint64_t Size() const override { return file_.Size(); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        return file_.ReadAt(offset, buffer);
    }

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        return file_.WriteAt(offset, data);
    }

    base::SystemError Flush() override {
        const base::SystemError error = file_.Sync();
        file_.DropCache();
        return error;
    }

    base::SystemError Commit() override {
        // An open folder may outlive its medium, and then the file would be lost without an error.
        if (!folder_.IsInPlace())
            return {base::kErrorNotReady};
        return file_.TakeName(name_, Replacing::kWritable, Durability::kOnMedium);
    }

  private:
    OpenFolder folder_;
    NewFile file_;
    EntryName name_;
};

} // namespace

std::unique_ptr<StagedFile> StagedFile::Create(const std::string& folder, const std::string& name,
                                               base::SystemError& error) {
    OpenFolder opened = OpenFolder::At(folder, Links::kFollowed, error);
    if (error)
        return nullptr;
    if (name.empty() || name.find_first_of("\\/") != std::string::npos) {
        error = {base::kErrorInvalidName};
        return nullptr;
    }
    NewFile file = opened.StartFile(NewFileUse::kStaged, error);
    return error ? nullptr
                 : std::make_unique<StagedInFolder>(std::move(opened), std::move(file), EntryNameOf(name));
}

} // namespace platform
