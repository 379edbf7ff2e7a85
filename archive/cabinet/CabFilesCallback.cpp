#include "archive/cabinet/CabFilesCallback.h"

#include "archive/cabinet/CabFile.h"
#include "archive/cabinet/CabinetIterator.h"

namespace cabinet {

namespace {

CabFile* currentCabFile = nullptr;

} // namespace

CabFile* CurrentCabFile() {
    return currentCabFile;
}

void SetCurrentCabFile(CabFile* cabFile) {
    currentCabFile = cabFile;
}

std::uint32_t CabIterateCallback(std::uintptr_t context, std::uint32_t notification, void* param1,
                                 std::uintptr_t param2) {
    return currentCabFile ? currentCabFile->OnNotification(context, notification, param1, param2) : kNoError;
}

} // namespace cabinet
