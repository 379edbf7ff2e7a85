#include "ui/explorer/commands/CabPacking.h"

#include "app/Texts.h"
#include "base/FileName.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/Yield.h"

namespace ui {
namespace {

using cabinet::CabFailure;

constexpr std::uint32_t kCannotRead = 630;
constexpr std::uint32_t kLink = 631;
constexpr std::uint32_t kSpecialFile = 632;
constexpr std::uint32_t kEmptyFolder = 633;
constexpr std::uint32_t kName = 634;
constexpr std::uint32_t kFileTooLarge = 635;
constexpr std::uint32_t kTooMuch = 636;
constexpr std::uint32_t kChanged = 637;
constexpr std::uint32_t kCannotWrite = 638;
constexpr std::uint32_t kReadBack = 639;

bool Compress(std::int32_t mode, const std::string& path, const std::string& destinationFolder,
              const cabinet::CabProgressFunction& progress, cabinet::CabReport& report) {
    const BusyCursor busy;
    YieldNow();
    const std::string cabinetName = std::string(base::LastComponent(path)) + ".cab";
    const std::string source = mode == cabinet::kCabModeFolder ? path + '\\' : path;
    std::int16_t status = 0;
    report = cabinet::CabCompress(mode, destinationFolder, cabinetName, source, status, progress);
    return status == 0;
}

std::uint32_t ReasonId(CabFailure failure) {
    switch (failure) {
    case CabFailure::kLink:
        return kLink;
    case CabFailure::kSpecialFile:
        return kSpecialFile;
    case CabFailure::kEmptyFolder:
        return kEmptyFolder;
    case CabFailure::kName:
        return kName;
    case CabFailure::kFileTooLarge:
        return kFileTooLarge;
    case CabFailure::kTooManyFiles:
    case CabFailure::kCabinetTooLarge:
        return kTooMuch;
    case CabFailure::kChanged:
        return kChanged;
    case CabFailure::kCannotWrite:
        return kCannotWrite;
    case CabFailure::kReadBack:
        return kReadBack;
    default:
        return kCannotRead;
    }
}

} // namespace

bool CompressFolder(const std::string& folderPath, const std::string& destinationFolder,
                    const cabinet::CabProgressFunction& progress, cabinet::CabReport& report) {
    return Compress(cabinet::kCabModeFolder, folderPath, destinationFolder, progress, report);
}

bool CompressFile(const std::string& filePath, const std::string& destinationFolder,
                  const cabinet::CabProgressFunction& progress, cabinet::CabReport& report) {
    return Compress(cabinet::kCabModeFile, filePath, destinationFolder, progress, report);
}

std::string ReasonText(const cabinet::CabReport& report) {
    std::string text = report.path + "\n" + app::LoadText(ReasonId(report.failure));
    if (report.error)
        text += ' ' + report.error.Description();
    return text;
}

} // namespace ui
