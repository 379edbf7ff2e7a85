#include "platform/ScratchFile.h"

#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/WorkingFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace platform {
namespace {

constexpr std::size_t kReservedAtOnce = 8u << 20;

class HostScratchFile final : public ScratchFile {
  public:
    explicit HostScratchFile(HostFile file) : file_(std::move(file)) {}

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        Reserve(offset, data.size());
        return WriteFullyAt(file_, offset, data);
    }

    base::SystemError ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        const base::SystemError error = ReadFullyAt(file_, offset, buffer, count);
        return !error && count < buffer.size() ? base::SystemError{base::kErrorReadFault} : error;
    }

  private:
    /// Writing to space that has been allocated before takes half the time. When it cannot be allocated,
    /// writing reports why.
    void Reserve(std::uint64_t offset, std::size_t size) {
        if (offset >= reservedFrom_ && offset + size <= reservedTo_)
            return;
        reservedFrom_ = offset;
        reservedTo_ = offset + std::max(size, kReservedAtOnce);
        static_cast<void>(::fallocate(file_.Descriptor(), 0, static_cast<off_t>(reservedFrom_),
                                      static_cast<off_t>(reservedTo_ - reservedFrom_)));
    }

    HostFile file_;
    std::uint64_t reservedFrom_ = 0;
    std::uint64_t reservedTo_ = 0;
};

HostFile OpenUnnamed(const std::string& folder) {
    HostFile file(::open(folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600));
    if (file.IsOpen())
        return file;
    std::string name = folder + "/pellarion-XXXXXX"; // for file systems without nameless files
    file = HostFile(::mkostemp(name.data(), O_CLOEXEC));
    if (file.IsOpen())
        ::unlink(name.c_str());
    return file;
}

} // namespace

std::unique_ptr<ScratchFile> ScratchFile::Create() {
    std::error_code ignored;
    // The general temporary folder is often held in memory, so it comes last.
    for (const std::string& folder : {WorkingFolderRoot(), std::string("/var/tmp"),
                                      std::filesystem::temp_directory_path(ignored).string()}) {
        if (folder.empty())
            continue;
        HostFile file = OpenUnnamed(folder);
        if (file.IsOpen())
            return std::make_unique<HostScratchFile>(std::move(file));
    }
    return nullptr;
}

} // namespace platform
