#include "platform/FileReader.h"

#include "HostFile.h"
#include "platform/HostPath.h"

namespace platform {
namespace {

class HostFileReader final : public FileReader {
  public:
    HostFileReader(HostFile file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

    std::uint64_t Size() const override { return size_; }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(file_, offset, buffer, count); // what came before a fault still counts
        return count;
    }

  private:
    HostFile file_;
    std::uint64_t size_;
};

} // namespace

std::unique_ptr<FileReader> FileReader::Open(const std::string& path, SystemError& error) {
    const std::string host = HostPathOf(path);
    if (host.empty()) {
        error = {kErrorPathNotFound};
        return nullptr;
    }

    struct stat status {};

    HostFile file = OpenForReading(host, status, error);
    if (error)
        return nullptr;
    return std::make_unique<HostFileReader>(std::move(file), static_cast<std::uint64_t>(status.st_size));
}

} // namespace platform
