#include "platform/ResourceLibrary.h"

#include "base/PeStringTable.h"
#include "platform/Files.h"

namespace platform {
namespace {

constexpr std::uint64_t kMaxLibrarySize = 16U << 20;

class LoadedLibrary final : public ResourceLibrary {
  public:
    explicit LoadedLibrary(base::PeStringTable table) : table_(std::move(table)) {}

    std::string LoadString(std::uint32_t id) const override { return table_.Find(id); }

  private:
    base::PeStringTable table_;
};

} // namespace

std::unique_ptr<ResourceLibrary> ResourceLibrary::Load(const std::string& path, base::SystemError& error) {
    std::optional<std::string> image = ReadWholeFile(path, kMaxLibrarySize, error);
    if (!image) {
        // Too large for a text library.
        if (error.code == base::kErrorInvalidData)
            error = {base::kErrorBadExeFormat};
        return nullptr;
    }
    std::optional<base::PeStringTable> table = base::PeStringTable::Read(*std::move(image));
    if (!table) {
        error = {base::kErrorBadExeFormat};
        return nullptr;
    }
    return std::make_unique<LoadedLibrary>(*std::move(table));
}

} // namespace platform
