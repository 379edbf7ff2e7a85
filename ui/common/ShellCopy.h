#pragma once

#include <string>

namespace ui {

/// Copies one file, or a folder with all that it holds, into the folder `toFolder`, replacing files of the
/// same name. True when everything has been copied; the user is told what could not be. A folder is not
/// copied into itself.
bool ShellCopy(const std::string& from, const std::string& toFolder);

/// Renames a file or folder. True when that is done; else the user is told why not, and nothing has changed.
bool ShellRename(const std::string& from, const std::string& to);

} // namespace ui
