#include "platform/FileReader.h"

#include "HostAttributes.h"
#include "HostFile.h"
#include "platform/HostPath.h"

namespace platform {
namespace {

class HostFileReader final : public FileReader {
  public:
    HostFileReader(HostFile file, std::string host, const FileIdentity& identity)
        : file_(std::move(file)), host_(std::move(host)), identity_(identity) {}

    std::uint64_t Size() const override { return identity_.size; }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(file_, offset, buffer, count); // what came before a fault still counts
        return count;
    }

    bool IsUnchanged() const override {
        struct stat status {};

        return ::stat(host_.c_str(), &status) == 0 && IdentityOf(status) == identity_;
    }

  private:
    HostFile file_;
    std::string host_;
    FileIdentity identity_;
};

} // namespace

std::unique_ptr<FileReader> FileReader::Open(const std::string& path, SystemError& error) {
    std::string host = HostPathOf(path);
    if (host.empty()) {
        error = {kErrorPathNotFound};
        return nullptr;
    }

    struct stat status {};

    HostFile file = OpenForReading(host, status, error);
    if (error)
        return nullptr;
    return std::make_unique<HostFileReader>(std::move(file), std::move(host), IdentityOf(status));
}

} // namespace platform
