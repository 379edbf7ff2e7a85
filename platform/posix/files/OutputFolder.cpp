#include "platform/OutputFolder.h"

#include "platform/Files.h"
#include "platform/HostPath.h"
#include "platform/NewOutputFile.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/files/NewFile.h"
#include "platform/posix/paths/FolderListing.h"
#include "platform/posix/paths/HostNames.h"
#include "platform/posix/paths/OpenFolderBelow.h"
#include "platform/posix/paths/WorkingFolder.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// Whether `name` can be one component of a path and nothing more.
bool IsPlainName(std::string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\\0"sv) == std::string_view::npos;
}

class HostFolder final : public OutputFolder {
  public:
    HostFolder(HostFile folder, bool holdsWorkingFolder)
        : folder_(std::move(folder)), holdsWorkingFolder_(holdsWorkingFolder) {}

    base::SystemError WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                                const std::optional<FileTimes>& times) override;
    std::unique_ptr<OutputFile> CreateFile(std::string_view name, base::SystemError& error) override;
    std::unique_ptr<OutputFolder> OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                               base::SystemError& error) override;
    std::unique_ptr<OutputFolder> OpenExact(std::string_view path) override;

  private:
    HostFile OpenBelow(const std::string& hostName) const;

    HostFile folder_;
    bool holdsWorkingFolder_;
    FolderListing listing_;
};

base::SystemError HostFolder::WriteFile(std::string_view name, std::span<const std::uint8_t> data,
                                        const std::optional<FileTimes>& times) {
    if (!IsPlainName(name))
        return {base::kErrorInvalidName};
    const std::string hostName = HostNameOf(name);
    base::SystemError error;
    // Nearly always the name is free, and the file can have it at once.
    if (NewFile file = CreateFileIn(folder_.Descriptor(), hostName, error); !error)
        error = WriteAndKeep(std::move(file), data, times);
    else if (error.code == base::kErrorFileExists)
        error = ReplaceWhole(*this, name, data, times);
    if (!error)
        listing_.Add(hostName);
    return error;
}

std::unique_ptr<OutputFile> HostFolder::CreateFile(std::string_view name, base::SystemError& error) {
    if (!IsPlainName(name)) {
        error = {base::kErrorInvalidName};
        return nullptr;
    }
    std::string hostName = HostNameOf(name);
    listing_.Add(hostName);
    NewFile file = StartFileIn(folder_.Descriptor(), NewFileUse::kOutput, error);
    return error ? nullptr : std::make_unique<NewOutputFile>(std::move(file), std::move(hostName));
}

HostFile HostFolder::OpenBelow(const std::string& hostName) const {
    return HostFile(::openat(folder_.Descriptor(), hostName.c_str(), kFolderFlags | O_NOFOLLOW));
}

std::unique_ptr<OutputFolder> HostFolder::OpenOrCreate(std::string_view name, std::string_view nameWhenMade,
                                                       base::SystemError& error) {
    error = {base::kErrorInvalidName};
    if (!IsPlainName(name) || !IsPlainName(nameWhenMade))
        return nullptr;
    if (holdsWorkingFolder_ && IsWorkingFolderName(name)) {
        CreateFolder(WorkingFolderPath()); // when it is there already, opening is what counts
        return Open(WorkingFolderPath(), error);
    }
    const std::string exact = HostNameOf(name);
    HostFile below;
    bool isMissing = listing_.IsListed() && listing_.Find(folder_, name).empty();
    if (!isMissing) {
        below = OpenBelow(exact);
        isMissing = !below.IsOpen() && errno == ENOENT;
        // Only now does the letter case matter.
        if (const std::string found = isMissing ? listing_.Find(folder_, name) : ""; !found.empty()) {
            below = OpenBelow(found);
            isMissing = !below.IsOpen() && errno == ENOENT;
        }
    }
    bool isNew = false;
    if (isMissing) {
        const std::string hostName = HostNameOf(nameWhenMade);
        isNew = ::mkdirat(folder_.Descriptor(), hostName.c_str(), 0777) == 0;
        if (!isNew && errno != EEXIST) {
            error = ErrorFromErrno(errno, Access::kWrite);
            return nullptr;
        }
        listing_.Add(hostName);
        below = OpenBelow(hostName);
    }
    if (!below.IsOpen()) {
        error = ErrorFromErrno(errno, Access::kWrite);
        return nullptr;
    }
    error = {};
    auto folder = std::make_unique<HostFolder>(std::move(below), false);
    if (isNew)
        folder->listing_.StartEmpty();
    return folder;
}

std::unique_ptr<OutputFolder> HostFolder::OpenExact(std::string_view path) {
    if (holdsWorkingFolder_)
        return nullptr;
    HostFile below = OpenFolderBelow(folder_, path);
    return below.IsOpen() ? std::make_unique<HostFolder>(std::move(below), false) : nullptr;
}

} // namespace

std::size_t OutputFolder::MostOpen() {
    constexpr rlim_t kMost = 4096;
    constexpr rlim_t kForOthers = 512;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return kForOthers / 4;
    // The usual limit is low for the sake of old programs only, and may be raised.
    if (limit.rlim_cur < kMost + kForOthers) {
        const rlim_t before = limit.rlim_cur;
        limit.rlim_cur = std::min(kMost + kForOthers, limit.rlim_max);
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0)
            limit.rlim_cur = before;
    }
    const rlim_t left = limit.rlim_cur < 2 * kForOthers ? limit.rlim_cur / 2 : limit.rlim_cur - kForOthers;
    return static_cast<std::size_t>(std::min(kMost, left));
}

std::unique_ptr<OutputFolder> OutputFolder::Open(const std::string& path, base::SystemError& error) {
    const std::string host = HostPathOf(path);
    if (host.empty()) {
        error = {base::kErrorPathNotFound};
        return nullptr;
    }
    HostFile folder(::open(host.c_str(), kFolderFlags));
    if (!folder.IsOpen()) {
        error = ErrorForPath(errno, host);
        return nullptr;
    }
    error = {};
    return std::make_unique<HostFolder>(std::move(folder), HoldsWorkingFolder(host));
}

} // namespace platform
