#include "platform/ResourceLibrary.h"

#include "base/PeStringTable.h"
#include "platform/Files.h"

namespace platform {
namespace {

constexpr std::uint64_t kMaxLibrarySize = 16U << 20;

class LoadedLibrary final : public ResourceLibrary {
  public:
    explicit LoadedLibrary(PeStringTable table) : table_(std::move(table)) {}

    std::string LoadString(std::uint32_t id) const override { return table_.Find(id); }

  private:
    PeStringTable table_;
};

} // namespace

std::unique_ptr<ResourceLibrary> ResourceLibrary::Load(const std::string& path, SystemError& error) {
    std::optional<std::string> image = ReadWholeFile(path, kMaxLibrarySize, error);
    if (!image) {
        // Too large for a text library.
        if (error.code == kErrorInvalidData)
            error = {kErrorBadExeFormat};
        return nullptr;
    }
    std::optional<PeStringTable> table = PeStringTable::Read(*std::move(image));
    if (!table) {
        error = {kErrorBadExeFormat};
        return nullptr;
    }
    return std::make_unique<LoadedLibrary>(*std::move(table));
}

} // namespace platform
