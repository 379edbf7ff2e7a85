#pragma once

#include "platform/FileIdentity.h"

#include <cstdint>
#include <string_view>
#include <sys/stat.h>

namespace platform {

/// The attributes (Files.h) of the file or folder `name` with this status. A file is read-only when nobody
/// may write it, and hidden when its name begins with a dot.
std::uint32_t AttributesOf(const struct stat& status, std::string_view name);

/// Whether a file with this status must be neither replaced nor deleted: it is a folder, or a regular file
/// that nobody may write. Only the mode counts. A super-user could write to such a file, but its owner has
/// said that it is to stay as it is.
bool IsProtected(const struct stat& status);

/// Identity of the file with this status.
FileIdentity IdentityOf(const struct stat& status);

} // namespace platform
