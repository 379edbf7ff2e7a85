#include "StagedFile.h"

#include "HostAttributes.h"
#include "HostError.h"
#include "HostFile.h"
#include "HostNames.h"
#include "Replacement.h"
#include "platform/HostPath.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

class HostStagedFile final : public StagedFile {
  public:
    HostStagedFile(HostFile file, std::string temporary, std::string target)
        : file_(std::move(file)), temporary_(std::move(temporary)), target_(std::move(target)) {}

    ~HostStagedFile() override {
        if (!temporary_.empty())
            ::unlink(temporary_.c_str());
    }

    HostStagedFile(const HostStagedFile&) = delete;
    HostStagedFile& operator=(const HostStagedFile&) = delete;

    std::uint64_t Size() const override {
        struct stat status {};

        return ::fstat(file_.Descriptor(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
    }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(file_, offset, buffer, count);
        return count;
    }

    SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        return WriteFullyAt(file_, offset, data);
    }

    SystemError Flush() override {
        if (::fsync(file_.Descriptor()) != 0)
            return ErrorFromErrno(errno, Access::kWrite);
        // What the medium has made of it is wanted, not what memory still holds.
        static_cast<void>(::posix_fadvise(file_.Descriptor(), 0, 0, POSIX_FADV_DONTNEED));
        return {};
    }

    SystemError Commit() override {
        struct stat status {};

        if (::lstat(target_.c_str(), &status) == 0 && IsProtected(status))
            return {kErrorAccessDenied};
        if (::rename(temporary_.c_str(), target_.c_str()) != 0)
            return ErrorFromErrno(errno, Access::kWrite);
        temporary_.clear();
        SyncFolder(ParentOf(target_));
        return {};
    }

  private:
    HostFile file_;
    std::string temporary_;
    std::string target_;
};

} // namespace

std::unique_ptr<StagedFile> StagedFile::Create(const std::string& folder, const std::string& name,
                                               SystemError& error) {
    const std::string hostFolder = HostPathOf(folder);
    const std::string hostName = HostNameOf(name);
    if (hostFolder.empty()) {
        error = {kErrorPathNotFound};
        return nullptr;
    }
    if (hostName.empty() || hostName.find('/') != std::string::npos) {
        error = {kErrorInvalidName};
        return nullptr;
    }
    std::string temporary = JoinHostPath(hostFolder, {TemporaryName()});
    HostFile file(::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.IsOpen()) {
        error = ErrorForPath(errno, temporary, Access::kWrite);
        return nullptr;
    }
    error = {};
    return std::make_unique<HostStagedFile>(std::move(file), std::move(temporary),
                                            JoinHostPath(hostFolder, {hostName}));
}

} // namespace platform
