#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ui {

/// Walks a folder and collects the paths of its files, those of sub-folders included. Sub-folders whose names
/// begin with "." are passed by, as are files whose names end in one.
class clsFindFiles {
  public:
    std::string Directory; ///< the folder to walk, with a last backslash

    /// Walks `Directory` and copies the collected paths to `result`, which stays as it is while there are
    /// none. A further search adds to what the earlier ones found. Lets window messages run.
    void StartSearchFile(std::vector<std::string>& result);

    /// Files collected so far, and sub-folders met so far.
    std::int32_t FileCount() const { return static_cast<std::int32_t>(files_.size()); }

    std::int32_t DirectoryCount() const { return directoryCount_; }

  private:
    void Walk(const std::string& folder);

    std::vector<std::string> files_;
    std::int32_t directoryCount_ = 0;
};

} // namespace ui
