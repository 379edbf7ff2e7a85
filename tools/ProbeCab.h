#pragma once

#include "JsonWriter.h"
#include "ProbeCommand.h"

namespace tools {

/// Lists a cabinet through CabFile. "status" is the number of the error, 0 for none, and "error" its text.
void ListCab(const ProbeCommand& command, JsonWriter& json);

/// Extracts files one by one as the cabinet dialog does, into a sub-folder named after the cabinet. Goes on
/// after a file that fails; "status" and "error" are those of the first.
void ExtractCab(const ProbeCommand& command, JsonWriter& json);

/// Packs a file or folder into a cabinet named after it, as the compress command does, in the folder.
/// "status" is that of CabCompress, and "error" its reason.
void PackCab(const ProbeCommand& command, JsonWriter& json);

} // namespace tools
