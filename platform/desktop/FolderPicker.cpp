#include "platform/desktop/FolderPicker.h"

#include "SystemShell.h"
#include "platform/Files.h"

#include <utility>

namespace platform {
namespace {

class DesktopPicker : public FolderPicker {
  public:
    std::string Pick(const std::string& prompt, const std::string& start, QWidget* parent) override {
        return ShellPickFolder(prompt, start, parent);
    }
};

DesktopPicker desktopPicker;
FolderPicker* pickerInUse = &desktopPicker;
std::string lastPick;

} // namespace

FolderPicker* SetFolderPicker(FolderPicker* picker) {
    return std::exchange(pickerInUse, picker ? picker : &desktopPicker);
}

std::string BrowseForFolder(const std::string& prompt, const std::string& start, QWidget* parent) {
    std::string folder = pickerInUse->Pick(prompt, FolderExists(lastPick) ? lastPick : start, parent);
    if (!folder.empty())
        lastPick = folder;
    return folder;
}

} // namespace platform
