#pragma once

#include <string>

namespace platform {

/// The name in the host folder `folder` that equals `name` (host bytes) without regard to case; `name` itself
/// when there is none. The folders asked about last are remembered and kept up to date by the host's notices
/// of change, so that a thousand questions about one folder cost one listing even while it is being filled.
std::string FindInFolder(const std::string& folder, const std::string& name);

} // namespace platform
