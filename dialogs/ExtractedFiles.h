#pragma once

#include "archive/Cls_GetFileType.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace dialogs {

/// Where an entry of this stored name lies once it is extracted into `folder` (which ends in a backslash).
/// Nothing for a name that would lead out of the folder.
std::optional<std::string> ExtractedPath(const std::string& folder, const std::string& entryName);

/// Reads back what was extracted into `folder` from every entry of the archive that `front` has loaded, and
/// compares it with the recorded size and checksum. False at the first that is missing or differs, and when
/// `goOn`, asked before each entry, says no.
bool AllEntriesReadBack(const archive::Cls_GetFileType& front, const std::string& folder,
                        const std::function<bool(std::int32_t entry)>& goOn);

} // namespace dialogs
