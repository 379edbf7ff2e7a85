#include "platform/FindFiles.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/HostPath.h"
#include "platform/posix/files/HostAttributes.h"
#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostTimes.h"
#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace platform {
namespace {

/// The host name as the ANSI services show it: "?" for each character that the code page lacks.
std::string AnsiName(const char* hostName) {
    return AnsiToUtf8(Utf8ToAnsi(TextOfHostName(hostName)));
}

bool IsLink(int folder, const char* hostName, unsigned char type) {
    struct stat status {};

    return type == DT_LNK ||
           (type == DT_UNKNOWN && ::fstatat(folder, hostName, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISLNK(status.st_mode));
}

/// Describes the entry `hostName` of an open folder, whose kind is `type` as far as its listing tells. False
/// when the entry has gone meanwhile.
bool Describe(int folder, const char* hostName, unsigned char type, FindData& data) {
    const std::string_view path = hostName;
    const std::string name(path.substr(path.find_last_of('/') + 1));
    data = {};
    data.name = AnsiName(name.c_str());

    struct stat status {};

    if (::fstatat(folder, hostName, &status, 0) == 0 ||
        ::fstatat(folder, hostName, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        data.attributes = AttributesOf(status, name);
        if (IsLink(folder, hostName, type))
            data.attributes |= kAttributeReparsePoint;
        const auto size = S_ISDIR(status.st_mode) ? 0 : static_cast<std::uint64_t>(status.st_size);
        data.sizeHigh = static_cast<std::uint32_t>(size >> 32);
        data.sizeLow = static_cast<std::uint32_t>(size);
        data.lastWrite = FileTimeFromHost(status.st_mtim);
        return true;
    }
    if (errno == ENOENT)
        return false;
    data.attributes = type == DT_DIR ? kAttributeDirectory : kAttributeArchive;
    return true;
}

class HostFindFiles final : public FindFiles {
  public:
    explicit HostFindFiles(DIR* listing) : listing_(listing, ::closedir) {}

    bool Next(FindData& data) override {
        const int folder = ::dirfd(listing_.get());
        // The host returns the two dots anywhere in a listing; callers expect them first.
        if (dotsGiven_ < 2)
            return Describe(folder, dotsGiven_++ == 0 ? "." : "..", DT_DIR, data);
        while (const dirent* entry = ::readdir(listing_.get())) {
            const std::string_view name = entry->d_name;
            if (name != "." && name != ".." && Describe(folder, entry->d_name, entry->d_type, data))
                return true;
        }
        return false;
    }

  private:
    std::unique_ptr<DIR, int (*)(DIR*)> listing_;
    int dotsGiven_ = 0;
};

} // namespace

std::optional<FindData> FindEntry(const std::string& path) {
    std::string host = HostPathOf(path);
    while (host.size() > 1 && host.ends_with('/'))
        host.pop_back();
    FindData data;
    if (host.empty() || !Describe(AT_FDCWD, host.c_str(), DT_UNKNOWN, data) || !GetFileAttributes(path))
        return std::nullopt;
    return data;
}

std::unique_ptr<FindFiles> FindFiles::Start(const std::string& folder, base::SystemError& error) {
    const std::string host = HostPathOf(folder);
    if (host.empty()) {
        error = {base::kErrorPathNotFound};
        return nullptr;
    }
    DIR* listing = ::opendir(host.c_str());
    if (listing == nullptr) {
        error = errno == ENOTDIR ? base::SystemError{base::kErrorFolderInvalid} : ErrorForPath(errno, host);
        if (error.code == base::kErrorFileNotFound)
            error = {base::kErrorPathNotFound};
        return nullptr;
    }
    error = {};
    return std::make_unique<HostFindFiles>(listing);
}

} // namespace platform
