#pragma once

#include <string>

namespace ui {

/// Whether an existing folder stands at `path`.
bool IsFolder(const std::string& path);

/// Deletes one file, or a folder with everything in it, for good and without a question. Of a link, only the
/// link is deleted. Returns true when everything is gone. After a failure, which the user is told, part of a
/// folder may be gone. The root of a drive, a relative path and a path with ".." in it are refused.
bool ShellDelete(const std::string& path);

/// The same for a folder that may have a last backslash.
bool ShellDeleteFolder(const std::string& path);

} // namespace ui
