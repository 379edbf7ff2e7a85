#include "CommandIcon.h"

#include <QApplication>
#include <QStyle>

#include <string_view>

namespace explorer {

QIcon CommandIcon(const char* name) {
    const std::string_view wanted(name);
    QStyle::StandardPixmap picture = QStyle::SP_FileIcon;
    if (wanted == "up")
        picture = QStyle::SP_FileDialogToParent;
    else if (wanted == "new-folder")
        picture = QStyle::SP_FileDialogNewFolder;
    else if (wanted == "open" || wanted == "folder-open")
        picture = QStyle::SP_DirOpenIcon;
    else if (wanted == "delete")
        picture = QStyle::SP_TrashIcon;
    else if (wanted == "close")
        picture = QStyle::SP_DialogCloseButton;
    else if (wanted == "computer")
        picture = QStyle::SP_ComputerIcon;
    else if (wanted == "drive")
        picture = QStyle::SP_DriveHDIcon;
    else if (wanted == "folder")
        picture = QStyle::SP_DirIcon;
    return QApplication::style()->standardIcon(picture);
}

} // namespace explorer
