#pragma once

#include "archive/rar/RarLibrary.h"

#include <memory>
#include <string>

namespace rar {

/// The RAR library in the file (see SharedLibrary::Load), bound by name. Null when there is none or it lacks
/// one of the five calls that the door is made of. Codes that came with later libraries are answered as
/// kRarBadData, so that nobody takes them for success.
std::unique_ptr<RarLibrary> BindRarLibrary(const std::string& file);

} // namespace rar
