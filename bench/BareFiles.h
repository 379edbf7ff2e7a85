#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// The folders and files below a folder, and what it takes at the least to make them: per file open, write,
/// set the times, close. No program that unpacks them can do with less, so what remains is the file system's.
class BareFiles {
  public:
    /// Remembers the names and sizes of all there is below `folder`.
    explicit BareFiles(const std::string& folder);

    /// Makes the same below another folder, with zeros for content.
    void Make(const std::string& folder) const;

  private:
    struct File {
        std::string name;
        std::size_t size;
    };

    struct Folder {
        std::string path; ///< relative
        std::vector<File> files;
    };

    std::vector<Folder> folders_; ///< parents first
    std::size_t largest_ = 0;
};

} // namespace bench
