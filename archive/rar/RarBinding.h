#pragma once

#include "archive/rar/RarLibrary.h"

#include <memory>
#include <string>

namespace rar {

/// Loads the RAR library from the file (see SharedLibrary::Load) and binds its calls by name. Returns null
/// when there is no library or when it lacks one of the five calls that RarLibrary needs. Result codes that
/// later versions of the library have added become kRarBadData, so that nobody takes them for success.
std::unique_ptr<RarLibrary> BindRarLibrary(const std::string& file);

} // namespace rar
