#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace ui {

/// Where an entry of this stored name lies once it is extracted into `folder` (which ends in a backslash).
/// Empty for a name that would lead out of the folder.
std::string ExtractedPath(const std::string& folder, const std::string& entryName);

/// Whether the file at `path` has this size and CRC-32. `goOn` is asked now and then with the part that has
/// been read; when it says no, so does this.
bool HasContent(const std::string& path, std::uint64_t size, std::uint32_t crc,
                const std::function<bool()>& goOn);

} // namespace ui
