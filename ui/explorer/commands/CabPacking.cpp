#include "ui/explorer/commands/CabPacking.h"

#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/FileName.h"
#include "ui/common/BusyCursor.h"
#include "ui/common/Yield.h"

namespace ui {
namespace {

using cabinet::CabFailure;

bool Compress(std::int32_t mode, const std::string& path, const std::string& destinationFolder,
              base::WorkObserver& observer, cabinet::CabReport& report) {
    const BusyCursor busy;
    YieldNow();
    const std::string cabinetName = std::string(base::LastComponent(path)) + ".cab";
    const std::string source = mode == cabinet::kCabModeFolder ? path + '\\' : path;
    std::int16_t status = 0;
    report = cabinet::CabCompress(mode, destinationFolder, cabinetName, source, status, &observer);
    return status == 0;
}

std::uint32_t ReasonId(CabFailure failure) {
    switch (failure) {
    case CabFailure::kLink:
        return IDS_PACK_LINK;
    case CabFailure::kSpecialFile:
        return IDS_PACK_SPECIAL_FILE;
    case CabFailure::kEmptyFolder:
        return IDS_PACK_EMPTY_FOLDER;
    case CabFailure::kName:
        return IDS_PACK_NAME;
    case CabFailure::kFileTooLarge:
        return IDS_PACK_FILE_TOO_LARGE;
    case CabFailure::kTooManyFiles:
    case CabFailure::kCabinetTooLarge:
        return IDS_PACK_TOO_MUCH;
    case CabFailure::kChanged:
        return IDS_PACK_CHANGED;
    case CabFailure::kCannotWrite:
        return IDS_PACK_CANNOT_WRITE;
    case CabFailure::kReadBack:
        return IDS_PACK_READ_BACK;
    default:
        return IDS_PACK_CANNOT_READ;
    }
}

} // namespace

bool CompressFolder(const std::string& folderPath, const std::string& destinationFolder,
                    base::WorkObserver& observer, cabinet::CabReport& report) {
    return Compress(cabinet::kCabModeFolder, folderPath, destinationFolder, observer, report);
}

bool CompressFile(const std::string& filePath, const std::string& destinationFolder,
                  base::WorkObserver& observer, cabinet::CabReport& report) {
    return Compress(cabinet::kCabModeFile, filePath, destinationFolder, observer, report);
}

std::string ReasonText(const cabinet::CabReport& report) {
    std::string text = report.path + "\n" + app::LoadText(ReasonId(report.failure));
    if (report.error)
        text += ' ' + report.error.Description();
    return text;
}

} // namespace ui
