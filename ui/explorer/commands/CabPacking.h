#pragma once

#include "archive/cabinet/CabCompress.h"

#include <string>

namespace ui {

// Pack a folder with all below it, or one file, into the cabinet of its name and ".cab" in
// `destinationFolder`, which ends in a backslash. True when the cabinet is complete and checked; else
// `report` says why not, and nothing has changed.

bool CompressFolder(const std::string& folderPath, const std::string& destinationFolder,
                    base::WorkObserver& observer, cabinet::CabReport& report);
bool CompressFile(const std::string& filePath, const std::string& destinationFolder,
                  base::WorkObserver& observer, cabinet::CabReport& report);

/// Why a cabinet was not made, in the program's language: the path in question, and below it the reason.
std::string ReasonText(const cabinet::CabReport& report);

} // namespace ui
