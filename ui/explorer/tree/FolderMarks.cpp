#include "ui/explorer/tree/FolderMarks.h"

#include "base/Letters.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <optional>
#include <vector>

namespace ui {

namespace {

constexpr std::string_view kFileName = "\\tree.dat";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::uint64_t kLargestFile = 64 * 1024 * 1024;
constexpr std::size_t kDriveRootLength = 3;
constexpr std::size_t kDriveLength = 2;

/// What the list holds as bytes: empty when there is no list, nothing when there is one that cannot be read.
std::optional<std::string> ReadBytes(const std::string& file) {
    if (!platform::FileExists(file))
        return std::string();
    base::SystemError error;
    return platform::ReadWholeFile(file, kLargestFile, error);
}

/// The lines of the list without their ends; what follows the last line end is no line.
std::vector<std::string_view> LinesOf(std::string_view bytes) {
    std::vector<std::string_view> lines;
    for (std::size_t end = bytes.find(kLineEnd); end != std::string_view::npos; end = bytes.find(kLineEnd)) {
        lines.push_back(bytes.substr(0, end));
        bytes.remove_prefix(end + kLineEnd.size());
    }
    return lines;
}

/// What two lines have in common exactly when they are equal but for letter case.
std::string Folded(std::string_view line) {
    return base::ToUpper(platform::FileTextToUtf8(line));
}

} // namespace

bool MarkSet::IsMarked(std::string_view path) const {
    return !entries_.empty() && entries_.contains(base::ToUpper(FolderMarks::EntryOf(path)));
}

FolderMarks::FolderMarks(std::string_view folder) : file_(std::string(folder) + std::string(kFileName)) {}

std::string FolderMarks::EntryOf(std::string_view path) {
    if (path.size() == kDriveRootLength || path.size() < kDriveLength)
        return std::string(path);
    return std::string(path.substr(kDriveLength));
}

MarkSet FolderMarks::Read() const {
    MarkSet marks;
    const auto bytes = ReadBytes(file_);
    if (bytes) {
        for (const std::string_view line : LinesOf(*bytes))
            marks.entries_.insert(Folded(line));
    }
    return marks;
}

void FolderMarks::AddMark(std::string_view entry) const {
    auto bytes = ReadBytes(file_);
    if (!bytes)
        return;
    const std::string wanted = Folded(entry);
    for (const std::string_view line : LinesOf(*bytes)) {
        if (Folded(line) == wanted)
            return;
    }
    if (!bytes->empty() && !bytes->ends_with(kLineEnd))
        *bytes += kLineEnd; // a line that was typed in by hand stays a line of its own
    *bytes += entry;
    *bytes += kLineEnd;
    static_cast<void>(platform::WriteWholeFile(file_, *bytes));
}

void FolderMarks::RemoveMark(std::string_view entry) const {
    const auto bytes = ReadBytes(file_);
    if (!bytes || !platform::FileExists(file_))
        return;
    const std::string unwanted = Folded(entry);
    std::string kept;
    bool isFound = false;
    for (const std::string_view line : LinesOf(*bytes)) {
        if (Folded(line) == unwanted) {
            isFound = true;
            continue;
        }
        kept += line;
        kept += kLineEnd;
    }
    if (!isFound)
        return;
    static_cast<void>(platform::WriteWholeFile(file_, kept));
}

} // namespace ui
