#pragma once

#include <string>
#include <string_view>

namespace platform {

/// One of this program's paths as the system's calls take it: with the prefix that lifts the limit of 260
/// units and takes every name as it stands; empty when its drive does not exist. The root of a drive ends in
/// a backslash, nothing else does.
std::wstring WidePathOf(std::string_view path);

/// A host path (HostPathOf) with that prefix.
std::wstring WithPrefix(std::string_view hostPath);

/// `path` and `name` with one backslash between them.
std::wstring JoinWide(const std::wstring& path, std::wstring_view name);

} // namespace platform
