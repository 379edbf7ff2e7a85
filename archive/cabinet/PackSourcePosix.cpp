#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/PackSource.h"
#include "base/OutputPathRule.h"
#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/FolderNames.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace cabinet {
namespace {

constexpr int kFileFlags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

class HostPackInput final : public PackInput {
  public:
    HostPackInput(platform::HostFile file, const platform::FileIdentity& identity)
        : file_(std::move(file)), identity_(identity) {}

    base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count) override {
        return platform::ReadFully(file_, buffer, count);
    }

    bool IsUnchanged() const override {
        struct stat status {};

        return ::fstat(file_.Descriptor(), &status) == 0 && platform::IdentityOf(status) == identity_;
    }

  private:
    platform::HostFile file_;
    platform::FileIdentity identity_;
};

class HostPackSource final : public PackSource {
  public:
    /// `single` is the host name of the one file, or empty for the whole folder.
    HostPackSource(platform::HostFile folder, std::string path, std::string single)
        : folder_(std::move(folder)), path_(std::move(path)), single_(std::move(single)) {}

    CabReport List(std::vector<PackEntry>& entries, std::size_t most) override;
    std::unique_ptr<PackInput> OpenFile(const PackEntry& entry, CabReport& report) const override;

    std::string PathOf(const std::string& name) const override { return path_ + name; }

  private:
    /// What is met on the way: the list, how long it may be, and the first failure.
    struct Walk {
        std::vector<PackEntry>& entries;
        std::size_t most;
        CabReport report;
    };

    bool WalkFolder(int folder, const std::string& prefix, Walk& walk) const;
    bool Add(int folder, const std::string& prefix, const std::string& hostName, Walk& walk,
             std::vector<std::string>& folders) const;
    bool AddFile(const struct stat& status, std::string name, const std::string& hostName, Walk& walk) const;
    bool Fail(Walk& walk, CabFailure failure, const std::string& name, base::SystemError error = {}) const;

    platform::HostFile folder_;
    std::string path_;
    std::string single_;
};

bool HostPackSource::Fail(Walk& walk, CabFailure failure, const std::string& name,
                          base::SystemError error) const {
    walk.report = {failure, PathOf(name), error};
    return false;
}

CabReport HostPackSource::List(std::vector<PackEntry>& entries, std::size_t most) {
    entries.clear();
    Walk walk{entries, most, {}};
    if (single_.empty()) {
        WalkFolder(folder_.Descriptor(), "", walk);
    } else {
        std::vector<std::string> folders;
        if (Add(folder_.Descriptor(), "", single_, walk, folders) && !folders.empty())
            Fail(walk, CabFailure::kCannotRead, single_, {base::kErrorAccessDenied});
    }
    return walk.report;
}

/// Files first, then each sub-folder, by name.
bool HostPackSource::WalkFolder(int folder, const std::string& prefix, Walk& walk) const {
    std::vector<std::string> names;
    if (const base::SystemError error = platform::NamesIn(folder, names))
        return Fail(walk, CabFailure::kCannotRead, prefix, error);
    if (names.empty())
        return Fail(walk, CabFailure::kEmptyFolder, prefix);
    std::vector<std::string> folders;
    for (const std::string& name : names) {
        if (!Add(folder, prefix, name, walk, folders))
            return false;
    }
    names = {};
    for (const std::string& name : folders) {
        const std::string below = prefix + platform::TextOfHostName(name) + "\\";
        const platform::HostFile opened(::openat(folder, name.c_str(), kFolderFlags));
        if (!opened.IsOpen())
            return Fail(walk, CabFailure::kCannotRead, below, platform::ErrorFromErrno(errno));
        if (!WalkFolder(opened.Descriptor(), below, walk))
            return false;
    }
    return true;
}

bool HostPackSource::Add(int folder, const std::string& prefix, const std::string& hostName, Walk& walk,
                         std::vector<std::string>& folders) const {
    struct stat status {};

    std::string name = prefix + platform::TextOfHostName(hostName);
    if (::fstatat(folder, hostName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return Fail(walk, CabFailure::kCannotRead, name, platform::ErrorFromErrno(errno));
    // A name is only good when it means the same file again.
    if (platform::HostNameOf(platform::TextOfHostName(hostName)) != hostName ||
        name.size() > cabinet::kLongestName || !base::StaysInTarget(name))
        return Fail(walk, CabFailure::kName, name);
    if (S_ISDIR(status.st_mode)) {
        folders.push_back(hostName);
        return true;
    }
    if (S_ISLNK(status.st_mode))
        return Fail(walk, CabFailure::kLink, name);
    if (!S_ISREG(status.st_mode))
        return Fail(walk, CabFailure::kSpecialFile, name);
    return AddFile(status, std::move(name), hostName, walk);
}

bool HostPackSource::AddFile(const struct stat& status, std::string name, const std::string& hostName,
                             Walk& walk) const {
    if (status.st_size > static_cast<off_t>(cabinet::kLargestFolder))
        return Fail(walk, CabFailure::kFileTooLarge, name);
    if (walk.entries.size() == walk.most)
        return Fail(walk, CabFailure::kTooManyFiles, "");
    walk.entries.push_back({std::move(name), platform::IdentityOf(status),
                            platform::AttributesOf(status, hostName), (status.st_mode & S_IXUSR) != 0});
    return true;
}

std::unique_ptr<PackInput> HostPackSource::OpenFile(const PackEntry& entry, CabReport& report) const {
    std::string below;
    for (const std::string& component : base::SplitComponents(entry.name, "\\"))
        below += (below.empty() ? "" : "/") + platform::HostNameOf(component);
    platform::HostFile file(::openat(folder_.Descriptor(), below.c_str(), kFileFlags));
    if (!file.IsOpen()) {
        report = {CabFailure::kCannotRead, PathOf(entry.name), platform::ErrorFromErrno(errno)};
        return nullptr;
    }
    // Whatever stands in the file's place now, by way of a link or otherwise, is not what was found.
    auto input = std::make_unique<HostPackInput>(std::move(file), entry.identity);
    if (!input->IsUnchanged()) {
        report = {CabFailure::kChanged, PathOf(entry.name), {}};
        return nullptr;
    }
    return input;
}

std::unique_ptr<PackSource> Open(const std::string& hostFolder, const std::string& path, std::string single,
                                 int flags, CabReport& report) {
    platform::HostFile folder(::open(hostFolder.c_str(), flags));
    if (!folder.IsOpen()) {
        // A link in a folder's place is refused by the same number as a file.
        struct stat status {};

        const int number = errno;
        const bool isLink = ::lstat(hostFolder.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
        report = {isLink ? CabFailure::kLink : CabFailure::kCannotRead, path,
                  platform::ErrorForPath(number, hostFolder)};
        return nullptr;
    }
    return std::make_unique<HostPackSource>(std::move(folder), path, std::move(single));
}

} // namespace

std::unique_ptr<PackSource> PackSource::OpenFolder(const std::string& path, CabReport& report) {
    const std::string host = platform::HostPathOf(path);
    if (host.empty()) {
        report = {CabFailure::kCannotRead, path, {base::kErrorPathNotFound}};
        return nullptr;
    }
    return Open(host, path, "", kFolderFlags, report);
}

std::unique_ptr<PackSource> PackSource::OpenSingleFile(const std::string& path, CabReport& report) {
    const std::string host = platform::HostPathOf(path);
    const std::size_t slash = host.find_last_of('/');
    if (slash == std::string::npos || slash + 1 == host.size()) {
        report = {CabFailure::kCannotRead, path, {base::kErrorPathNotFound}};
        return nullptr;
    }
    const std::string shownFolder = path.substr(0, path.find_last_of('\\') + 1);
    return Open(host.substr(0, slash + 1), shownFolder, host.substr(slash + 1), kFolderFlags & ~O_NOFOLLOW,
                report);
}

} // namespace cabinet
