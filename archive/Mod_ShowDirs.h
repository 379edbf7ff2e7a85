#pragma once

#include "archive/RepeatedMessages.h"
#include "platform/OutputFolder.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace archive {

/// The folders of one extraction: the target and those on the way to the last one used stay open, so that
/// entries that stand together are written without walking their path again.
class OpenFolders {
  public:
    /// `target` is a path with a drive letter and a last separator; `messages` outlives this. Without them no
    /// failure is shown.
    explicit OpenFolders(std::string target, RepeatedMessages* messages = nullptr)
        : target_(std::move(target)), messages_(messages) {}

    /// The folder that the last CreateFolderPath opened, when `path` is that one; else null.
    platform::OutputFolder* Last(std::string_view path) const { return path == lastPath_ ? last_ : nullptr; }

    /// As CreateFolderPath, but a failure shows nothing.
    platform::OutputFolder* Open(std::string_view path, std::string_view madeAs);

    /// Opens the folder at `path`, which is the target or lies below it and ends in a separator, with all
    /// missing parents. What exists is found exactly, then without regard to letter case; what does not is
    /// made with its name in `madeAs`, the same path in the letter case for new folders. Links below the
    /// target are not followed. Null after a failure; message 542 (title 305) was reported then.
    platform::OutputFolder* CreateFolderPath(std::string_view path, std::string_view madeAs);

  private:
    struct Level {
        std::string name;
        std::unique_ptr<platform::OutputFolder> folder; // null: closed to keep few open
    };

    bool OpenInOneStep(std::string_view path);
    platform::OutputFolder* Walk(std::string_view path, std::string_view madeAs);
    bool OpenTarget(std::string_view madeAs);
    platform::OutputFolder* Reopen(std::size_t level);
    bool Push(std::size_t level, std::string_view name, std::string_view nameWhenMade);

    std::string target_;
    RepeatedMessages* messages_;
    std::vector<Level> levels_;                      // the target first
    std::unique_ptr<platform::OutputFolder> direct_; // opened without its levels
    std::string lastPath_;
    platform::OutputFolder* last_ = nullptr;
};

} // namespace archive
