#pragma once

#include <string_view>

namespace base {

/// Whether a file or folder may be given this name on every system that a drive may be carried to: not empty,
/// not made of dots alone, no dot or blank at its end, none of \ / : * ? " < > | and no control character.
bool IsFileName(std::string_view name);

/// The last component of a path, which has no last backslash.
std::string_view LastComponent(std::string_view path);

/// The folder of a path without a last backslash: up to its last backslash, which is kept only where the
/// folder is the root of a drive.
std::string_view FolderOf(std::string_view path);

} // namespace base
