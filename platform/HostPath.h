#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Converts a path of the host system to this program's form: drive letter, colon, backslashes. A relative
/// path starts at the current folder. On Linux the drive with the longest matching root is taken; the result
/// is empty when the path is on no drive of the table. On Windows only the separators change.
std::string PathFromHost(std::string_view hostPath);

/// Converts one of this program's paths to the host's; empty when its drive does not exist. Components are
/// found exactly first, then without regard to case. Components that do not exist are kept as they are.
std::string HostPathOf(std::string_view path);

} // namespace platform
