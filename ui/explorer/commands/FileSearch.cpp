#include "ui/explorer/commands/FileSearch.h"

#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "ui/common/Yield.h"

namespace ui {

void clsFindFiles::StartSearchFile(std::vector<std::string>& result) {
    Walk(Directory);
    if (!files_.empty())
        result = files_;
}

/// The files of the folder, then those of each sub-folder in the order found.
void clsFindFiles::Walk(const std::string& folder) {
    Yield();
    base::SystemError error;
    auto search = platform::FindFiles::Start(folder, error);
    if (!search)
        return;
    std::vector<std::string> subFolders;
    for (platform::FindData entry; search->Next(entry);) {
        const bool isFolder = (entry.attributes & platform::kAttributeDirectory) != 0;
        // A link to a folder is not a part of this one, and may lead back up.
        const bool isLink = (entry.attributes & platform::kAttributeReparsePoint) != 0;
        if (!isFolder && !entry.name.ends_with('.')) {
            files_.push_back(folder + entry.name);
        } else if (isFolder && !entry.name.starts_with('.')) {
            ++directoryCount_;
            if (!isLink)
                subFolders.push_back(folder + entry.name + '\\');
        }
    }
    search.reset();
    for (const std::string& subFolder : subFolders)
        Walk(subFolder);
}

} // namespace ui
