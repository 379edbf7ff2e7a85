#pragma once

#include <string>
#include <string_view>

namespace platform {

/// A path as the host system writes it, in this program's form: drive letter, colon, backslashes. A relative
/// path is taken from the current folder. On Linux the drive with the longest matching root wins; empty when
/// no drive of the table holds the path. On Windows only separators change.
std::string PathFromHost(std::string_view hostPath);

/// The host's path for one of this program's paths; empty when its drive does not exist. Components are
/// matched first exactly, then without regard to case; components that do not exist are kept as they are.
std::string HostPathOf(std::string_view path);

} // namespace platform
