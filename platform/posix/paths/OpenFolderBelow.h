#pragma once

#include "platform/posix/files/HostFile.h"

#include <string_view>

namespace platform {

/// Opens the folder at `path` (this program's form) below an open folder with one call of the kernel, which
/// follows no link and leaves the folder nowhere. Not open when there is none of exactly these names, or no
/// such call.
HostFile OpenFolderBelow(const HostFile& folder, std::string_view path);

} // namespace platform
