#pragma once

#include "base/SystemError.h"

#include <string>
#include <vector>

namespace platform {

/// Reads the names in the host folder `path`, without "." and "..", ordered by their units.
base::SystemError NamesIn(const std::wstring& path, std::vector<std::wstring>& names);

} // namespace platform
