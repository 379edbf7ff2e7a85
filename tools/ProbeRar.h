#pragma once

#include "JsonWriter.h"
#include "ProbeCommand.h"
#include "ProbeMessages.h"

namespace tools {

/// Lists a RAR archive: {"status", "comment", "entries", "messages"}. The status is 1 when the listing ended
/// with a stop message.
void ListRar(const ProbeCommand& command, const ProbeMessages& messages, JsonWriter& json);

/// Unpacks every entry to nowhere: {"entries": [{"name", "result", "crc"}], "status"}, with the library's
/// result codes; the status is that of the last header.
void TestRar(const ProbeCommand& command, JsonWriter& json);

/// Extracts the entries, or those that the command names: {"status", "messages"}. The status is 0 when the
/// extraction was complete, else 1.
void ExtractRar(const ProbeCommand& command, const ProbeMessages& messages, JsonWriter& json);

} // namespace tools
