#pragma once

#include <string>

namespace platform {

/// Has the desktop's file manager show the properties of what is at `path`. False when there is none, or it
/// does not answer.
bool FileManagerShowsProperties(const std::string& path);

} // namespace platform
