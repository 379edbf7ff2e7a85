#pragma once

#include <string>

namespace platform {

// Host paths without a trailing slash; empty when the user has no such folder. They may not exist yet.

std::string UserHome();
std::string UserCacheFolder();   ///< XDG_CACHE_HOME
std::string UserConfigFolder();  ///< XDG_CONFIG_HOME
std::string UserRuntimeFolder(); ///< XDG_RUNTIME_DIR

} // namespace platform
