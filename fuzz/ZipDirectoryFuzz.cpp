// Reads any bytes as a ZIP archive's directory and touches every byte of every text in it.

#include "archive/zip/ZipDirectory.h"

#include <algorithm>
#include <cstdlib>

namespace {

class MemoryFile final : public platform::FileReader {
  public:
    explicit MemoryFile(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint64_t Size() const override { return bytes_.size(); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        const auto left = bytes_.subspan(std::min<std::size_t>(offset, bytes_.size()));
        const auto part = left.first(std::min(left.size(), buffer.size()));
        std::ranges::copy(part, buffer.begin());
        return part.size();
    }

  private:
    std::span<const std::uint8_t> bytes_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryFile file({data, size});
    const auto directory = zip::ReadZipDirectory(file);
    if (!directory)
        return 0;
    if (directory->entries.size() > size / 46)
        std::abort();
    volatile char sum = 0;
    for (const zip::ArchiveEntry& entry : directory->entries)
        for (const std::string_view text : {entry.fileName, entry.extraField, entry.fileComment})
            for (const char c : text)
                sum = static_cast<char>(sum ^ c);
    return 0;
}
