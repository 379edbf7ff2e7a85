#pragma once

#include "archive/cabinet/PackPlan.h"
#include "archive/cabinet/ProgressMeter.h"
#include "platform/FileReader.h"

namespace cabinet {

/// Reads a whole cabinet with libmspack, which has no part in writing it, and compares everything with the
/// plan and with the source, read once more: names, sizes, dates, attributes and content.
CabReport CheckCabinet(const PackPlan& plan, const PackSource& source, platform::FileReader& cabinet,
                       ProgressMeter& progress);

} // namespace cabinet
