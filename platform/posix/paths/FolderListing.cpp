#include "platform/posix/paths/FolderListing.h"

#include "base/Letters.h"
#include "platform/posix/paths/FolderNames.h"
#include "platform/posix/paths/HostNames.h"

#include <utility>

namespace platform {

bool FolderListing::LessNoCase::operator()(const Entry& left, const Entry& right) const {
    const int order = base::CompareNoCase(left.text, right.text);
    return order != 0 ? order < 0 : left.hostName < right.hostName;
}

bool FolderListing::LessNoCase::operator()(const Entry& left, std::string_view right) const {
    return base::CompareNoCase(left.text, right) < 0;
}

bool FolderListing::LessNoCase::operator()(std::string_view left, const Entry& right) const {
    return base::CompareNoCase(left, right.text) < 0;
}

std::string FolderListing::Find(const HostFile& folder, std::string_view name) {
    if (!isListed_) {
        isListed_ = true;
        // What cannot be listed is taken for empty.
        static_cast<void>(NamesIn(folder.Descriptor(), added_));
    }
    Sort();
    const auto found = entries_.lower_bound(name);
    return found == entries_.end() || !base::EqualsNoCase(found->text, name) ? "" : found->hostName;
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
