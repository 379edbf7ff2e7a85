#pragma once

#include <string>

namespace platform {

/// The name in the host folder `folder` that equals `name` (host bytes) without regard to case; `name` itself
/// when there is none. The folders used last are remembered and kept up to date by the change notifications
/// of the operating system. Many look-ups in one folder therefore cost one listing, even while the folder is
/// being filled.
std::string FindInFolder(const std::string& folder, const std::string& name);

} // namespace platform
