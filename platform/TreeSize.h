#pragma once

#include "platform/FindFiles.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// Counts the files and folders at a path: a file, or a folder with everything below it; links are not
/// followed. Each call counts some entries only, so that a window can go on reacting. What cannot be read
/// counts as nothing.
class TreeSize {
  public:
    explicit TreeSize(const std::string& path);

    /// Counts up to `entries` more. Returns false when everything has been counted.
    bool CountSome(std::size_t entries);

    std::uint64_t Files() const { return files_; }

    std::uint64_t Folders() const { return folders_; } ///< the folder at the path itself not among them

    std::uint64_t Bytes() const { return bytes_; }

  private:
    void Add(const FindData& entry);

    std::vector<std::string> waiting_; ///< folders still to be listed, with a last backslash
    std::string folder_;               ///< the one that is being listed
    std::unique_ptr<FindFiles> listing_;
    std::uint64_t files_ = 0;
    std::uint64_t folders_ = 0;
    std::uint64_t bytes_ = 0;
};

} // namespace platform
