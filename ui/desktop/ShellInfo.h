#pragma once

#include <QIcon>

#include <string>

namespace ui {

/// Icon of a file or folder in the file list. Folders, drives and archives look as they do in the rest of
/// the program; other files take the desktop theme's icon, else one of ours. Goes by the extension alone and
/// remembers it, so that it costs next to nothing per row; the disk is not touched.
QIcon FileIcon(const std::string& path, bool isFolder);

/// The shell's type name for an extension with its leading dot (`GetFileTypeName`): the desktop's own
/// description, else "XYZ File". Remembered by extension.
std::string FileTypeName(const std::string& extension);

/// Draws one of the program's icons by name: "file", "folder", "archive-zip", "drive-removable", ...
using IconSource = QIcon (*)(const char* name);

/// Sets who draws the program's own icons; without one the toolkit's style does. Forgets the icons that are
/// remembered.
void SetIconSource(IconSource source);

} // namespace ui
