#pragma once

#include <QIcon>

#include <string>

namespace platform {

/// Icon of a file or folder in the file list, from the desktop's theme, else drawn by the source below. Goes
/// by the extension alone and remembers it, so that it costs next to nothing per row; the disk is not
/// touched.
QIcon FileIcon(const std::string& path, bool isFolder);

/// The shell's type name for an extension with its leading dot (`GetFileTypeName`): the desktop's own
/// description, else "XYZ File". Remembered by extension.
std::string FileTypeName(const std::string& extension);

/// Draws an icon by name: "file", "folder", "archive", "drive".
using IconSource = QIcon (*)(const char* name);

/// Sets who draws the icons that the desktop's theme lacks; without one the toolkit's style does. Forgets the
/// icons that are remembered.
void SetFallbackIcons(IconSource source);

} // namespace platform
