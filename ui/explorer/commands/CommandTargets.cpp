#include "ui/explorer/commands/CommandTargets.h"

#include "platform/SpecialFolders.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/Navigator.h"

namespace ui {

CommandRun::CommandRun(CommandTargets& targets)
    : isFirst_(!targets.isRunning && !targets.navigator.IsBusy()), running_(targets.isRunning) {
    targets.isRunning = true;
    if (isFirst_)
        targets.isStopWanted = false;
}

std::string CurrentFolderPath(const CommandTargets& targets) {
    std::string path = targets.navigator.SelectedKey();
    if (path == kRootKey)
        path = platform::GetSpecialFolderPath(platform::kCsidlDesktopDirectory);
    path.push_back('\\');
    for (std::size_t at = path.find("\\\\"); at != std::string::npos; at = path.find("\\\\", at))
        path.erase(at, 1);
    return path;
}

} // namespace ui
