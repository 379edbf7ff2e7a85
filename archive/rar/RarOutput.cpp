#include "archive/rar/RarOutput.h"

#include "archive/rar/RarLibrary.h"

namespace platform::rar {

std::unique_ptr<OutputFile> BeginOutput(OutputFolder* folder, const std::string& destName) {
    SystemError error;
    return folder ? folder->CreateFile(destName.substr(destName.find_last_of('\\') + 1), error) : nullptr;
}

int CommitOutput(OutputFile& file, const std::optional<FileTime>& lastWrite, bool executable) {
    FileTraits traits;
    traits.executable = executable;
    if (lastWrite)
        traits.times = FileTimes{*lastWrite, *lastWrite, *lastWrite};
    switch (file.Commit(traits).code) {
    case 0:
        return kRarSuccess;
    case kErrorDiskFull:
    case kErrorWriteFault:
        return kRarWriteError;
    case kErrorAccessDenied: // a folder or a protected file has the name
    case kErrorWriteProtect:
        return kRarCannotCreate;
    default:
        return kRarCannotClose;
    }
}

} // namespace platform::rar
