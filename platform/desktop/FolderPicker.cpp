#include "platform/desktop/FolderPicker.h"

#include "platform/Files.h"
#include "platform/HostPath.h"

#include <QFileDialog>

#include <utility>

namespace platform {
namespace {

class DesktopPicker : public FolderPicker {
  public:
    std::string Pick(const std::string& prompt, const std::string& start, QWidget* parent) override {
        const QString folder = QFileDialog::getExistingDirectory(
            parent, QString::fromStdString(prompt), QString::fromStdString(HostPathOf(start)),
            QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
        return folder.isEmpty() ? std::string() : PathFromHost(folder.toStdString());
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
