#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Converts one of this program's paths to the form that Windows calls take: with the prefix that lifts the
/// limit of 260 units and takes every name literally. Empty when its drive does not exist. Only the root of a
/// drive ends in a backslash.
std::wstring WidePathOf(std::string_view path);

/// A host path (HostPathOf) with that prefix.
std::wstring WithPrefix(std::string_view hostPath);

/// `path` and `name` with one backslash between them.
std::wstring JoinWide(const std::wstring& path, std::wstring_view name);

} // namespace platform
