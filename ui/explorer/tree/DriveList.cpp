#include "ui/explorer/tree/DriveList.h"

#include "platform/Drives.h"

namespace ui {

namespace {

constexpr char kFirstLetter = 'C';
constexpr char kLastLetter = 'Z';
constexpr std::string_view kRemovableName = "Remove";

std::string RootOf(const std::string& letter) {
    return letter + ":\\";
}

} // namespace

std::vector<std::string> GetDriveLetters() {
    std::vector<std::string> letters;
    for (char letter = kFirstLetter; letter <= kLastLetter; ++letter) {
        const std::string text(1, letter);
        const platform::DriveType type = platform::GetDriveType(RootOf(text));
        if (type == platform::DriveType::kRemovable || type == platform::DriveType::kFixed)
            letters.push_back(text);
    }
    return letters;
}

std::string_view DriveTypeName(const std::string& letter) {
    switch (platform::GetDriveType(RootOf(letter))) {
    case platform::DriveType::kRemovable:
        return kRemovableName;
    case platform::DriveType::kFixed:
        return "Fixed";
    default:
        return "donno";
    }
}

std::vector<std::string> RemovableDriveRoots() {
    std::vector<std::string> roots;
    for (const std::string& letter : GetDriveLetters()) {
        if (DriveTypeName(letter) == kRemovableName)
            roots.push_back(RootOf(letter));
    }
    return roots;
}

} // namespace ui
