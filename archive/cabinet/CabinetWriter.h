#pragma once

#include "archive/cabinet/PackPlan.h"
#include "archive/cabinet/ProgressMeter.h"
#include "platform/StagedFile.h"

namespace cabinet {

/// Packs the files of a plan into `out`, from its first byte to its last. The source is only read.
CabReport WriteCabinet(const PackPlan& plan, const PackSource& source, platform::StagedFile& out,
                       ProgressMeter& progress);

} // namespace cabinet
