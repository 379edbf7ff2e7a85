#pragma once

#include "ui/explorer/list/FileRow.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// Rows for the entries of `folder` (a path with a last backslash), in the order in which the file system
/// returns them, hidden ones included; names that hold "?" or end in "." are left out. `keepGoing` is asked
/// after each entry, which is the moment to let window messages run; when it answers false, what has been
/// read so far is returned. A folder that cannot be searched gives no rows.
std::vector<FileRow> ListFolderFiles(const std::string& folder, FileKinds& kinds,
                                     const std::function<bool()>& keepGoing);

/// Gives a row its name and all that follows from it.
void SetName(FileRow& row, const std::string& name, FileKinds& kinds);

} // namespace ui
