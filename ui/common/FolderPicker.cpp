#include "ui/common/FolderPicker.h"

#include "platform/Files.h"
#include "ui/common/FolderPickerDialog.h"
#include "ui/desktop/SystemShell.h"

#include <utility>

namespace ui {
namespace {

class DesktopPicker : public FolderPicker {
  public:
    std::string Pick(const std::string& prompt, const std::string& start, QWidget* parent) override {
        if (auto folder = ShellPickFolder(prompt, start, parent))
            return *std::move(folder);
        FolderPickerDialog dialog(prompt, start, parent);
        return dialog.exec() == QDialog::Accepted ? dialog.Folder() : std::string();
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
    std::string folder =
        pickerInUse->Pick(prompt, platform::FolderExists(lastPick) ? lastPick : start, parent);
    if (!folder.empty())
        lastPick = folder;
    return folder;
}

} // namespace ui
