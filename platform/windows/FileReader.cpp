#include "platform/FileReader.h"

#include "Handle.h"
#include "WidePath.h"

namespace platform {
namespace {

class HostFileReader final : public FileReader {
  public:
    explicit HostFileReader(Handle file) : file_(std::move(file)), size_(SizeOf(file_)) {}

    std::uint64_t Size() const override { return size_; }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(file_, offset, buffer, count); // what came before a fault still counts
        return count;
    }

  private:
    Handle file_;
    std::uint64_t size_;
};

} // namespace

std::unique_ptr<FileReader> FileReader::Open(const std::string& path, SystemError& error) {
    const std::wstring host = WidePathOf(path);
    error = {kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    Handle file = OpenForReading(host, error);
    if (error)
        return nullptr;
    return std::make_unique<HostFileReader>(std::move(file));
}

} // namespace platform
