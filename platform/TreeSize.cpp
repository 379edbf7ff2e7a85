#include "platform/TreeSize.h"

#include "platform/Files.h"

namespace platform {
namespace {

std::string WithBackslash(std::string path) {
    if (!path.ends_with('\\'))
        path.push_back('\\');
    return path;
}

} // namespace

TreeSize::TreeSize(const std::string& path) {
    const auto entry = FindEntry(path);
    if (entry && (entry->attributes & kAttributeDirectory) != 0)
        waiting_.push_back(WithBackslash(path));
    else if (entry)
        Add(*entry);
}

void TreeSize::Add(const FindData& entry) {
    const bool isLink = (entry.attributes & kAttributeReparsePoint) != 0;
    if ((entry.attributes & kAttributeDirectory) != 0 && !isLink) {
        ++folders_;
        waiting_.push_back(folder_ + entry.name + '\\');
        return;
    }
    ++files_;
    bytes_ += (std::uint64_t{entry.sizeHigh} << 32) | entry.sizeLow;
}

bool TreeSize::CountSome(std::size_t entries) {
    while (entries > 0) {
        if (!listing_) {
            if (waiting_.empty())
                return false;
            folder_ = std::move(waiting_.back());
            waiting_.pop_back();
            base::SystemError error;
            listing_ = FindFiles::Start(folder_, error);
            if (!listing_)
                continue;
        }
        FindData entry;
        if (!listing_->Next(entry)) {
            listing_.reset();
            continue;
        }
        if (entry.name == "." || entry.name == "..")
            continue;
        Add(entry);
        --entries;
    }
    return true;
}

} // namespace platform
