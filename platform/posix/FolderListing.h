#pragma once

#include "HostFile.h"

#include <set>
#include <string>
#include <string_view>

namespace platform {

/// The names in one open folder, for finding one without regard to case. The folder is listed at the first
/// question; after that Add() keeps the list up to date.
class FolderListing {
  public:
    /// The host name that equals `name` without regard to case; empty when there is none.
    std::string Find(const HostFile& folder, std::string_view name);

    /// Tells of a name that has come into the folder.
    void Add(const std::string& hostName);

  private:
    struct Entry {
        std::string text;
        std::string hostName;
    };

    struct LessNoCase {
        using is_transparent = void;
        bool operator()(const Entry& left, const Entry& right) const;
        bool operator()(const Entry& left, std::string_view right) const;
        bool operator()(std::string_view left, const Entry& right) const;
    };

    bool isListed_ = false;
    std::set<Entry, LessNoCase> entries_;
};

} // namespace platform
