#pragma once

#include "base/SystemError.h"

#include <string>
#include <vector>

namespace platform {

/// Reads the names in an open folder, without "." and "..", ordered by their bytes. What came before a
/// failure is answered too.
base::SystemError NamesIn(int folder, std::vector<std::string>& names);

} // namespace platform
