#pragma once

#include "platform/posix/files/HostFile.h"

#include <string_view>

namespace platform {

/// Opens the folder at `path` (this program's form) below an open folder with one call to the kernel, which
/// follows no link and never leaves the open folder. The result is not open when there is no folder of
/// exactly these names, or when the kernel has no such call.
HostFile OpenFolderBelow(const HostFile& folder, std::string_view path);

} // namespace platform
