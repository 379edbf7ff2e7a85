#pragma once

#include "ui/explorer/list/FileRow.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// Returns rows for the entries of `folder` (a path with a last backslash), in the order in which the file
/// system lists them, hidden ones included. Names that contain "?" or end in "." are left out. Calls
/// `keepGoing` after each entry, which may let window messages run; when it returns false, the rows read so
/// far are returned. A folder that cannot be searched gives no rows.
std::vector<FileRow> ListFolderFiles(const std::string& folder, FileKinds& kinds,
                                     const std::function<bool()>& keepGoing);

/// Sets the name of a row and everything that depends on it.
void SetName(FileRow& row, const std::string& name, FileKinds& kinds);

} // namespace ui
