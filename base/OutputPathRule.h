#pragma once

#include <string_view>

namespace base {

/// Whether a file or folder of this stored name (separators "/" and "\") stays inside the folder that it is
/// written to, on every system that the program runs on. Refused are:
///
///   - an empty name, leading separators and empty parts,
///   - ".." parts,
///   - colons (drive letters, streams),
///   - NUL and other control characters,
///   - parts that end in a dot or a blank, which Windows drops,
///   - device names such as "NUL", "com1.txt" or "CONOUT$",
///   - names so long that the file could not be reached by its path afterwards.
///
/// A single last separator, and "." parts in front of others, do no harm.
bool StaysInTarget(std::string_view name);

} // namespace base
