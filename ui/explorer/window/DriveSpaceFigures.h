#pragma once

#include "platform/Drives.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ui {

/// What the window shows of a drive's space, each figure in whole megabytes.
struct DriveSpaceFigures {
    std::uint64_t totalMegabytes = 0;
    std::uint64_t freeMegabytes = 0;
};

/// The cluster counts are divided by 1024 before they are multiplied, so each figure is a whole multiple of
/// the cluster size.
DriveSpaceFigures FiguresOf(const platform::DriveSpace& space);

/// Free share in per cent with at most two decimals and no zeros behind them ("45.5", "0.5", "50"); nothing
/// when the total is 0.
std::optional<std::string> PercentText(const DriveSpaceFigures& figures);

/// Text of the space label, such as "1234MB (45.5%)"; nothing when the percentage cannot be told.
std::optional<std::string> DriveSpaceText(const DriveSpaceFigures& figures);

} // namespace ui
