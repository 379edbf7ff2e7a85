#pragma once

#include "platform/posix/files/HostFile.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The names in one open folder, to find one without regard to case. The folder is listed at the first
/// look-up, unless it is known to be new; after that Add() and Remove() keep the list up to date.
class FolderListing {
  public:
    /// Says that the folder is empty, so that it need not be listed.
    void StartEmpty() { isListed_ = true; }

    /// The host name that equals `name` without regard to case; empty when there is none.
    std::string Find(const HostFile& folder, std::string_view name);

    /// Says that a name has been added to the folder or removed from it.
    void Add(const std::string& hostName);
    void Remove(const std::string& hostName);

    bool IsListed() const { return isListed_; }

  private:
    struct Entry {
        std::string text;
        std::string hostName;
    };

    /// Names that differ only by case stand side by side.
    struct LessNoCase {
        using is_transparent = void;
        bool operator()(const Entry& left, const Entry& right) const;
        bool operator()(const Entry& left, std::string_view right) const;
        bool operator()(std::string_view left, const Entry& right) const;
    };

    void Sort();

    bool isListed_ = false;
    std::vector<std::string> added_;      ///< not yet among the entries: most are never asked for
    std::set<Entry, LessNoCase> entries_; ///< in order of text, then of host name
};

} // namespace platform
