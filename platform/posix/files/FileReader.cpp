#include "platform/FileReader.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostFile.h"

#include <chrono>

namespace platform {
namespace {

constexpr std::chrono::milliseconds kWalkInterval{10};

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

    /// A change of the file itself is noticed at once. To notice that another file has taken its place, the
    /// path has to be walked, so this is done only every few milliseconds, however often it is asked.
    bool IsUnchanged() const override {
        struct stat status {};

        if (::fstat(file_.Descriptor(), &status) != 0 || status.st_nlink == 0 ||
            IdentityOf(status) != identity_)
            return false;
        const auto now = std::chrono::steady_clock::now();
        if (now - lastWalk_ < kWalkInterval)
            return true;
        lastWalk_ = now;
        return ::stat(host_.c_str(), &status) == 0 && IdentityOf(status) == identity_;
    }

  private:
    HostFile file_;
    std::string host_;
    FileIdentity identity_;
    mutable std::chrono::steady_clock::time_point lastWalk_ = std::chrono::steady_clock::now();
};

} // namespace

std::unique_ptr<FileReader> FileReader::Open(const std::string& path, base::SystemError& error) {
    std::string host = HostPathOf(path);
    if (host.empty()) {
        error = {base::kErrorPathNotFound};
        return nullptr;
    }

    struct stat status {};

    HostFile file = OpenForReading(host, status, error);
    if (error)
        return nullptr;
    return std::make_unique<HostFileReader>(std::move(file), std::move(host), IdentityOf(status));
}

} // namespace platform
