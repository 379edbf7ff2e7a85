#include "platform/posix/paths/FolderCache.h"

#include "platform/posix/files/HostFile.h"
#include "platform/posix/paths/FolderListing.h"
#include "platform/posix/paths/HostNames.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fcntl.h>
#include <list>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr std::size_t kMostFolders = 8;
constexpr std::uint32_t kNameCame = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kNameWent = IN_DELETE | IN_MOVED_FROM;

/// A folder whose names are known.
struct KnownFolder {
    dev_t device = 0;
    ino_t inode = 0;
    timespec modified{};
    int watch = -1;
    bool wasNotified = false; ///< since the last question
    FolderListing listing;

    bool Is(const struct stat& status) const { return device == status.st_dev && inode == status.st_ino; }

    bool IsAsOldAs(const struct stat& status) const {
        return modified.tv_sec == status.st_mtim.tv_sec && modified.tv_nsec == status.st_mtim.tv_nsec;
    }
};

HostFile OpenFolder(const std::string& folder) {
    return HostFile(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

class FolderCache {
  public:
    FolderCache() : notices_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

    std::string Find(const std::string& folder, std::string_view text) {
        struct stat status {};

        if (::stat(folder.c_str(), &status) != 0)
            return "";
        TakeNotices();
        KnownFolder* known = Recall(status);
        if (known == nullptr)
            known = Remember(folder, status);
        if (known == nullptr)
            return FolderListing().Find(OpenFolder(folder), text);
        return known->listing.Find(known->listing.IsListed() ? HostFile() : OpenFolder(folder), text);
    }

  private:
    /// The folder with this status, brought to the front; null when it is not known or has changed without a
    /// notice, as one that lies on another computer does.
    KnownFolder* Recall(const struct stat& status) {
        const auto found = std::find_if(folders_.begin(), folders_.end(),
                                        [&](const KnownFolder& f) { return f.Is(status); });
        if (found == folders_.end())
            return nullptr;
        if (!found->IsAsOldAs(status) && !found->wasNotified) {
            Forget(found);
            return nullptr;
        }
        found->wasNotified = false;
        found->modified = status.st_mtim;
        folders_.splice(folders_.begin(), folders_, found);
        return &folders_.front();
    }

    /// Null when the host gives no notices for the folder.
    KnownFolder* Remember(const std::string& folder, const struct stat& status) {
        // Watched before it is listed: a name that comes in between is met twice, which does no harm.
        const int watch = ::inotify_add_watch(notices_.Descriptor(), folder.c_str(),
                                              kNameCame | kNameWent | IN_DELETE_SELF | IN_ONLYDIR);
        if (watch < 0)
            return nullptr;
        if (folders_.size() == kMostFolders)
            Forget(std::prev(folders_.end()));
        folders_.emplace_front();
        KnownFolder& known = folders_.front();
        known.device = status.st_dev;
        known.inode = status.st_ino;
        known.modified = status.st_mtim;
        known.watch = watch;
        return &known;
    }

    void Forget(std::list<KnownFolder>::iterator folder) {
        ::inotify_rm_watch(notices_.Descriptor(), folder->watch);
        folders_.erase(folder);
    }

    void TakeNotices() {
        alignas(inotify_event) std::array<char, 16384> buffer;
        for (;;) {
            const ssize_t size = ::read(notices_.Descriptor(), buffer.data(), buffer.size());
            if (size <= 0)
                return;
            for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
                inotify_event event{};
                std::memcpy(&event, buffer.data() + at, sizeof event);
                Take(event, event.len == 0 ? "" : buffer.data() + at + sizeof event);
                at += sizeof event + event.len;
            }
        }
    }

    void Take(const inotify_event& event, const char* name) {
        if ((event.mask & IN_Q_OVERFLOW) != 0) {
            while (!folders_.empty())
                Forget(folders_.begin());
            return;
        }
        const auto folder = std::find_if(folders_.begin(), folders_.end(),
                                         [&](const KnownFolder& f) { return f.watch == event.wd; });
        if (folder == folders_.end())
            return;
        folder->wasNotified = true;
        if ((event.mask & kNameCame) != 0)
            folder->listing.Add(name);
        else if ((event.mask & kNameWent) != 0)
            folder->listing.Remove(name);
        else
            folders_.erase(folder); // deleted or unmounted; the watch has gone with it
    }

    HostFile notices_;
    std::list<KnownFolder> folders_; ///< the one asked about last in front
};

} // namespace

std::string FindInFolder(const std::string& folder, const std::string& name) {
    static FolderCache cache;
    std::string found = cache.Find(folder, TextOfHostName(name));
    return found.empty() ? name : found;
}

} // namespace platform
