#include "platform/posix/paths/DriveLetters.h"

#include <algorithm>

namespace platform {

std::vector<DriveEntry> WithLetters(std::vector<DriveEntry> drives, const std::vector<DriveEntry>& before) {
    for (DriveEntry& drive : drives) {
        const auto known = std::find_if(before.begin(), before.end(),
                                        [&](const DriveEntry& d) { return d.root == drive.root; });
        if (known != before.end())
            drive.letter = known->letter;
    }
    const auto isTaken = [&](char letter) {
        return std::any_of(drives.begin(), drives.end(),
                           [&](const DriveEntry& d) { return d.letter == letter; });
    };
    for (DriveEntry& drive : drives) {
        for (char letter = 'D'; drive.letter == 0 && letter <= 'Z'; ++letter) {
            if (!isTaken(letter))
                drive.letter = letter;
        }
    }
    std::erase_if(drives, [](const DriveEntry& d) { return d.letter == 0; });
    return drives;
}

} // namespace platform
