#pragma once

#include "base/SystemError.h"

#include <string>
#include <vector>

namespace platform {

/// Reads the names in an open folder, without "." and "..", ordered by their bytes. After a failure, the
/// names read before it are returned.
base::SystemError NamesIn(int folder, std::vector<std::string>& names);

} // namespace platform
