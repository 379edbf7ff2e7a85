#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// The name of a file or folder exactly as the system keeps it. Not every such name is text.
using EntryName = std::filesystem::path::string_type;

/// The name as text, to be shown; "?" or a replacement character stands for what is no text.
std::string TextOf(const EntryName& name);

/// The name that this text means.
EntryName EntryNameOf(std::string_view text);

} // namespace platform
