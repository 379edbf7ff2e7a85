#include "ui/archive/ExtractedFiles.h"

#include "archive/codec/Crc32.h"
#include "base/OutputPathRule.h"
#include "platform/FileReader.h"

#include <algorithm>
#include <vector>

namespace ui {

std::string ExtractedPath(const std::string& folder, const std::string& entryName) {
    if (!base::StaysInTarget(entryName))
        return {};
    std::string path = folder + entryName;
    std::replace(path.begin(), path.end(), '/', '\\');
    for (std::size_t at; (at = path.find("\\\\")) != std::string::npos;)
        path.erase(at, 1);
    return path;
}

bool HasContent(const std::string& path, std::uint64_t size, std::uint32_t crc,
                const std::function<bool()>& goOn) {
    constexpr std::uint64_t kPiece = 1u << 20;
    base::SystemError error;
    const auto file = platform::FileReader::Open(path, error);
    if (!file || file->Size() != size)
        return false;
    codec::Cls_CRC32 check;
    check.ResetCRC32();
    std::vector<std::uint8_t> piece(static_cast<std::size_t>(std::min(size, kPiece)));
    for (std::uint64_t done = 0; done < size; done += piece.size()) {
        piece.resize(static_cast<std::size_t>(std::min(kPiece, size - done)));
        if (!goOn() || file->ReadAt(done, piece) != piece.size())
            return false;
        check.CalcCRC32Block(piece);
    }
    return size == 0 ? crc == 0 : check.CRC32() == crc;
}

} // namespace ui
