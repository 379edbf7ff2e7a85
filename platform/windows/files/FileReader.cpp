#include "platform/FileReader.h"

#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

class HostFileReader final : public FileReader {
  public:
    HostFileReader(Handle file, std::wstring host)
        : file_(std::move(file)), host_(std::move(host)), size_(SizeOf(file_)),
          entry_(DescribeHandle(file_)) {}

    std::uint64_t Size() const override { return size_; }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(file_, offset, buffer, count); // what came before a fault still counts
        return count;
    }

    bool IsUnchanged() const override {
        const std::optional<HostEntry> now = DescribeTarget(host_);
        return now && entry_ && now->identity == entry_->identity;
    }

  private:
    Handle file_;
    std::wstring host_;
    std::uint64_t size_;
    std::optional<HostEntry> entry_; ///< as it was opened
};

} // namespace

std::unique_ptr<FileReader> FileReader::Open(const std::string& path, base::SystemError& error) {
    std::wstring host = WidePathOf(path);
    error = {base::kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    Handle file = OpenForReading(host, error);
    if (error)
        return nullptr;
    return std::make_unique<HostFileReader>(std::move(file), std::move(host));
}

} // namespace platform
