#pragma once

#include <string_view>

namespace base {

/// Whether a file or folder may be given this name on every system that the drive may be used with. The name
/// must not be empty, must not consist of dots alone, must not end in a dot or a blank, and must not contain
/// \ / : * ? " < > | or a control character.
bool IsFileName(std::string_view name);

/// The last component of a path, which has no last backslash.
std::string_view LastComponent(std::string_view path);

/// The folder of a path without a last backslash: up to its last backslash, which is kept only where the
/// folder is the root of a drive.
std::string_view FolderOf(std::string_view path);

} // namespace base
