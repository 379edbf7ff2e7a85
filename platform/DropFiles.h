#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// Bytes before the names in a file list made here.
inline constexpr std::size_t kDropFilesHeaderSize = 20;

/// A list of files as it lies on the clipboard: the header (offset of the names 20; point 0,0; both flags 0),
/// then each path in the ANSI code page with a NUL behind it, and one more NUL.
std::string BuildDropFiles(const std::vector<std::string>& paths);

/// The paths of such a list from any program, ANSI or wide (UTF-16). A list that is too short for its header,
/// or whose names start inside the header or behind its end, holds none; a last name without a NUL, which may
/// have been cut, is left out. Takes time and memory in proportion to `block`.
std::vector<std::string> ParseDropFiles(std::span<const std::uint8_t> block);

} // namespace platform
