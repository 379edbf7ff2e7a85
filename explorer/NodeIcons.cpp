#include "explorer/NodeIcons.h"

#include "CommandIcon.h"

namespace explorer {

QIcon RootIcon() {
    return CommandIcon("computer");
}

QIcon DriveIcon() {
    return CommandIcon("drive");
}

QIcon FolderIcon() {
    QIcon icon;
    const QIcon closed = CommandIcon("folder");
    const QIcon open = CommandIcon("folder-open");
    for (const int size : {16, 20, 24, 32, 48, 64}) {
        icon.addPixmap(closed.pixmap(size, size), QIcon::Normal);
        icon.addPixmap(open.pixmap(size, size), QIcon::Selected);
    }
    return icon;
}

} // namespace explorer
