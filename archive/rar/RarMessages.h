#pragma once

#include "archive/output/RepeatedMessages.h"
#include "archive/rar/RarLibrary.h"

#include <string>

namespace rar {

/// Messages that stop a listing (title IDS_ERROR_TITLE); the program ends after them. Each function returns
/// whether there is a message for the code.
bool ShowOpenStop(int code, const std::string& archive);
bool ShowSkipStop(int code);
bool ShowHeaderStop(int code);

/// Tells that the archive to extract is not there (title IDS_WARNING_TITLE).
void ShowArchiveGone(const std::string& archive);

/// CheckRarResult with messages that may come many times.
bool ReportRarResult(output::RepeatedMessages& messages, int code, const RARHeaderData& header);

} // namespace rar
