#include "explorer/NodeIcons.h"

#include "app/windows/Icons.h"

namespace explorer {

QIcon RootIcon() {
    return app::Icon("computer");
}

QIcon DriveIcon() {
    return app::Icon("drive-removable");
}

QIcon FolderIcon() {
    QIcon icon = app::Icon("folder");
    const QIcon open = app::Icon("folder-open");
    for (const QSize size : open.availableSizes())
        icon.addPixmap(open.pixmap(size), QIcon::Selected);
    return icon;
}

} // namespace explorer
