#pragma once

#include "archive/output/RepeatedMessages.h"
#include "archive/rar/RarLibrary.h"

#include <string>

namespace rar {

/// Stop messages of a listing (title IDS_ERROR_TITLE), after which the program ends. Each answers whether it
/// has a message for the code.
bool ShowOpenStop(int code, const std::string& archive);
bool ShowSkipStop(int code);
bool ShowHeaderStop(int code);

/// Tells that the archive to extract is not there (title IDS_WARNING_TITLE).
void ShowArchiveGone(const std::string& archive);

/// CheckRarResult with messages that may come many times.
bool ReportRarResult(output::RepeatedMessages& messages, int code, const RARHeaderData& header);

} // namespace rar
