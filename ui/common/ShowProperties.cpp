#include "ui/common/ShowProperties.h"

#include "platform/Files.h"
#include "ui/common/PropertiesWindow.h"
#include "ui/desktop/SystemShell.h"

#include <utility>

namespace ui {
namespace {

constexpr int kShown = 42;
constexpr int kNotFound = 2;

class DesktopViewer : public PropertiesViewer {
  public:
    int Show(const std::string& path, QWidget* ownerWindow) override {
        if (!platform::GetFileAttributes(path))
            return kNotFound;
        if (!ShellShowsProperties(path, ownerWindow))
            (new PropertiesWindow(path, ownerWindow))->show();
        return kShown;
    }
};

DesktopViewer desktopViewer;
PropertiesViewer* viewerInUse = &desktopViewer;

} // namespace

PropertiesViewer* SetPropertiesViewer(PropertiesViewer* viewer) {
    return std::exchange(viewerInUse, viewer ? viewer : &desktopViewer);
}

int ShowProperties(const std::string& path, QWidget* ownerWindow) {
    return viewerInUse->Show(path, ownerWindow);
}

} // namespace ui
