#pragma once

#include "archive/output/RepeatedMessages.h"
#include "platform/OutputFolder.h"

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace output {

/// The folders of one extraction. The target folder and the folders that were used last stay open. Entries
/// are therefore written without walking their paths again, in any order, and a folder is not listed for each
/// entry that is made in it.
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
    /// target are not followed. Null after a failure; message IDS_FOLDER_NOT_MADE was reported then.
    platform::OutputFolder* CreateFolderPath(std::string_view path, std::string_view madeAs);

  private:
    /// A folder below the target that is kept open.
    struct Kept {
        std::string key;  ///< its path in upper case; no two are the same
        std::string path; ///< as it was asked for
        std::unique_ptr<platform::OutputFolder> folder;
    };

    /// One step on the way from the target to a folder.
    struct Step {
        std::string_view name;
        std::string_view nameWhenMade;
        std::string_view path; ///< from the target to here
        std::size_t keyEnd;    ///< of the part of `key_` that stands for it
    };

    using KeptList = std::list<Kept>;

    bool OpenTarget(std::string_view madeAs);
    platform::OutputFolder* Walk(std::string_view path, std::string_view madeAs);
    void SplitPath(std::string_view path, std::string_view madeAs);
    platform::OutputFolder* FindKept(const Step& step);
    platform::OutputFolder* Use(KeptList::iterator kept);
    platform::OutputFolder* Keep(const Step& step, std::unique_ptr<platform::OutputFolder> folder);
    void Drop(KeptList::iterator kept);

    std::string target_;
    RepeatedMessages* messages_;
    std::unique_ptr<platform::OutputFolder> base_; ///< the target
    std::size_t mostOpen_ = platform::OutputFolder::MostOpen();
    KeptList kept_; ///< the one used last comes first
    std::unordered_map<std::string_view, KeptList::iterator> byKey_;
    std::vector<Step> steps_; ///< of the path that is being walked
    std::string key_;
    std::string lastPath_;
    platform::OutputFolder* last_ = nullptr;
};

} // namespace output
