#pragma once

#include <string>

namespace ui {

/// Copies one file, or a folder with everything in it, into the folder `toFolder` and replaces files of the
/// same name. Returns true when everything has been copied; otherwise the user is told what could not be. A
/// folder is not copied into itself.
bool ShellCopy(const std::string& from, const std::string& toFolder);

/// Renames a file or folder. Returns true when that is done; otherwise the user is told why not, and nothing
/// has changed.
bool ShellRename(const std::string& from, const std::string& to);

} // namespace ui
