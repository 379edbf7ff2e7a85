#include "ExtractedFiles.h"

#include "archive/Cls_CRC32.h"
#include "archive/OutputPathRule.h"
#include "platform/Files.h"

#include <algorithm>
#include <span>

namespace dialogs {
namespace {

bool ReadsBack(const archive::Cls_GetFileType& front, std::int32_t entry, const std::string& path) {
    if (front.IsDir(entry))
        return platform::FolderExists(path);
    const auto size = static_cast<std::uint32_t>(front.UnCompressed_Size(entry));
    platform::SystemError error;
    const auto content = platform::ReadWholeFile(path, size, error);
    if (!content || content->size() != size)
        return false;
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(content->data()), content->size());
    return archive::Cls_CRC32().CalcCRC32File(bytes) == static_cast<std::uint32_t>(front.CRC32(entry));
}

} // namespace

std::optional<std::string> ExtractedPath(const std::string& folder, const std::string& entryName) {
    if (!archive::StaysInTarget(entryName))
        return std::nullopt;
    std::string path = folder + entryName;
    std::replace(path.begin(), path.end(), '/', '\\');
    for (std::size_t at; (at = path.find("\\\\")) != std::string::npos;)
        path.erase(at, 1);
    return path;
}

bool AllEntriesReadBack(const archive::Cls_GetFileType& front, const std::string& folder,
                        const std::function<bool(std::int32_t entry)>& goOn) {
    for (std::int32_t entry = 1; entry <= front.FileCount(); ++entry) {
        const auto path = ExtractedPath(folder, front.FileName(entry));
        if (!goOn(entry) || !path || !ReadsBack(front, entry, *path))
            return false;
    }
    return true;
}

} // namespace dialogs
