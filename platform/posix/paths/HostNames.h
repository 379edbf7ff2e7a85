#pragma once

#include "base/PathComponents.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// `root` and `components` as one host path.
std::string JoinHostPath(const std::string& root, const std::vector<std::string>& components);

/// The folder that holds `hostPath`.
std::string ParentOf(const std::string& hostPath);

/// A host name as text: "?" stands for a backslash and for bytes that are not text in the locale's code page.
std::string TextOfHostName(std::string_view name);

/// The host's bytes for one component of a path.
std::string HostNameOf(std::string_view text);

} // namespace platform
