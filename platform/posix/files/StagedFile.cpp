#include "platform/StagedFile.h"

#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/TemporaryFile.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

/// Begins the name of a temporary file of this kind. These files are locked as long as somebody uses them.
constexpr std::string_view kMark = ".staged";

/// Takes away what was left by programs that were killed.
void RemoveAbandoned(const std::string& hostFolder) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(hostFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!IsTemporaryName(entry->path().filename().string(), kMark))
            continue;
        const HostFile file(::open(entry->path().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.IsOpen() && ::flock(file.Descriptor(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(entry->path().c_str());
    }
}

class HostStagedFile final : public StagedFile {
  public:
    /// `hostFolder` has a last slash.
    HostStagedFile(const std::string& hostFolder, const std::string& hostName)
        : staged_(AT_FDCWD, hostFolder + std::string(kMark), O_RDWR, 0666), target_(hostFolder + hostName) {
        // Where files cannot be locked, no file is taken for abandoned.
        if (IsOpen())
            static_cast<void>(::flock(staged_.File().Descriptor(), LOCK_EX | LOCK_NB));
    }

    bool IsOpen() const { return staged_.File().IsOpen(); }

    std::uint64_t Size() const override {
        struct stat status {};

        return ::fstat(staged_.File().Descriptor(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size)
                                                                  : 0;
    }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        ReadFullyAt(staged_.File(), offset, buffer, count);
        return count;
    }

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        return WriteFullyAt(staged_.File(), offset, data);
    }

    base::SystemError Flush() override {
        if (const base::SystemError error = staged_.Sync())
            return error;
        // The bytes must be read back from the medium, not from memory.
        static_cast<void>(::posix_fadvise(staged_.File().Descriptor(), 0, 0, POSIX_FADV_DONTNEED));
        return {};
    }

    base::SystemError Commit() override {
        struct stat status {};

        if (::lstat(target_.c_str(), &status) == 0 && IsProtected(status))
            return {base::kErrorAccessDenied};
        if (const base::SystemError error = staged_.TakeName(target_))
            return error;
        SyncFolder(ParentOf(target_));
        return {};
    }

  private:
    TemporaryFile staged_;
    std::string target_;
};

} // namespace

std::unique_ptr<StagedFile> StagedFile::Create(const std::string& folder, const std::string& name,
                                               base::SystemError& error) {
    const std::string hostFolder = HostPathOf(folder);
    const std::string hostName = HostNameOf(name);
    if (hostFolder.empty()) {
        error = {base::kErrorPathNotFound};
        return nullptr;
    }
    if (hostName.empty() || hostName.find('/') != std::string::npos) {
        error = {base::kErrorInvalidName};
        return nullptr;
    }
    const std::string prefix = JoinHostPath(hostFolder, {""});
    RemoveAbandoned(prefix);
    auto file = std::make_unique<HostStagedFile>(prefix, hostName);
    error = file->IsOpen() ? base::SystemError{} : ErrorForPath(errno, prefix + hostName, Access::kWrite);
    return error ? nullptr : std::move(file);
}

} // namespace platform
