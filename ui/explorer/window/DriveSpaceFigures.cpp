#include "ui/explorer/window/DriveSpaceFigures.h"

#include <cmath>

namespace ui {

DriveSpaceFigures FiguresOf(const platform::DriveSpace& space) {
    const std::uint64_t clusterSize = std::uint64_t{space.bytesPerSector} * space.sectorsPerCluster;
    const auto megabytes = [clusterSize](std::uint64_t clusters) {
        return clusters / 1024 * clusterSize / 1024;
    };
    return {megabytes(space.totalClusters), megabytes(space.freeClusters)};
}

std::optional<std::string> PercentText(const DriveSpaceFigures& figures) {
    if (figures.totalMegabytes == 0)
        return std::nullopt;
    const double percent =
        static_cast<double>(figures.freeMegabytes) / static_cast<double>(figures.totalMegabytes) * 100;
    const long long hundredths = std::llround(percent * 100);
    std::string text = std::to_string(hundredths / 100);
    if (const long long decimals = hundredths % 100; decimals != 0) {
        text += '.';
        text += static_cast<char>('0' + decimals / 10);
        if (decimals % 10 != 0)
            text += static_cast<char>('0' + decimals % 10);
    }
    return text;
}

std::optional<std::string> DriveSpaceText(const DriveSpaceFigures& figures) {
    const auto percent = PercentText(figures);
    if (!percent)
        return std::nullopt;
    return std::to_string(figures.freeMegabytes) + "MB (" + *percent + "%)";
}

} // namespace ui
