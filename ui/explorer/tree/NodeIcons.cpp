#include "ui/explorer/tree/NodeIcons.h"

#include "ui/common/Icons.h"

namespace ui {

QIcon RootIcon() {
    return Icon("computer");
}

QIcon DriveIcon() {
    return Icon("drive-removable");
}

QIcon FolderIcon() {
    return Icon("folder", "folder-open");
}

} // namespace ui
