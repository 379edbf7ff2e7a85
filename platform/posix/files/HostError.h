#pragma once

#include "base/SystemError.h"

#include <string>

namespace platform {

/// Whether the failed operation was reading from the medium or writing to it; tells the two device errors
/// apart.
enum class Access { kRead, kWrite };

/// The system error that stands for an `errno` value.
base::SystemError ErrorFromErrno(int number, Access access = Access::kRead);

/// The same for a failed operation on `hostPath`: a missing name is told apart from a missing folder.
base::SystemError ErrorForPath(int number, const std::string& hostPath, Access access = Access::kRead);

} // namespace platform
