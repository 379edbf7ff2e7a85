#pragma once

#include <string>

namespace ui {

/// Whether an existing folder stands at `path`.
bool IsFolder(const std::string& path);

/// Deletes one file, or a folder with all that it holds, for good and without a question. A link goes itself,
/// never what it points at. True when everything is gone; after a failure, which the user is told, part of a
/// folder may be. The root of a drive, a relative path and a path with ".." in it are refused.
bool ShellDelete(const std::string& path);

/// The same for a folder that may have a last backslash.
bool ShellDeleteFolder(const std::string& path);

} // namespace ui
