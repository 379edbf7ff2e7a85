#include "ui/explorer/tree/NodeIcons.h"

#include "ui/common/Icons.h"

namespace explorer {

QIcon RootIcon() {
    return app::Icon("computer");
}

QIcon DriveIcon() {
    return app::Icon("drive-removable");
}

QIcon FolderIcon() {
    return app::Icon("folder", "folder-open");
}

} // namespace explorer
