#include "FolderListing.h"

#include "HostNames.h"
#include "platform/Letters.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace platform {

bool FolderListing::LessNoCase::operator()(const Entry& left, const Entry& right) const {
    const int order = CompareNoCase(left.text, right.text);
    return order != 0 ? order < 0 : left.hostName < right.hostName;
}

bool FolderListing::LessNoCase::operator()(const Entry& left, std::string_view right) const {
    return CompareNoCase(left.text, right) < 0;
}

bool FolderListing::LessNoCase::operator()(std::string_view left, const Entry& right) const {
    return CompareNoCase(left, right.text) < 0;
}

std::string FolderListing::Find(const HostFile& folder, std::string_view name) {
    if (!isListed_) {
        isListed_ = true;
        // A descriptor of its own, so that listing does not move the folder's.
        const int own = ::openat(folder.Descriptor(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const std::unique_ptr<DIR, int (*)(DIR*)> listing(own < 0 ? nullptr : ::fdopendir(own), ::closedir);
        if (listing == nullptr && own >= 0)
            ::close(own);
        while (const dirent* entry = listing == nullptr ? nullptr : ::readdir(listing.get()))
            Add(entry->d_name);
    }
    Sort();
    const auto found = entries_.lower_bound(name);
    return found == entries_.end() || !EqualsNoCase(found->text, name) ? "" : found->hostName;
}

void FolderListing::Add(const std::string& hostName) {
    if (isListed_)
        added_.push_back(hostName);
}

void FolderListing::Remove(const std::string& hostName) {
    Sort();
    if (isListed_)
        entries_.erase({TextOfHostName(hostName), hostName});
}

void FolderListing::Sort() {
    for (std::string& hostName : added_)
        entries_.insert({TextOfHostName(hostName), std::move(hostName)});
    added_.clear();
}

} // namespace platform
