#include "archive/rar/RarOutput.h"

#include "archive/rar/RarLibrary.h"

namespace rar {

std::unique_ptr<platform::OutputFile> BeginOutput(platform::OutputFolder* folder,
                                                  const std::string& destName) {
    base::SystemError error;
    return folder ? folder->CreateFile(destName.substr(destName.find_last_of('\\') + 1), error) : nullptr;
}

int CommitOutput(platform::OutputFile& file, const std::optional<platform::FileTime>& lastWrite,
                 bool executable) {
    platform::FileTraits traits;
    traits.executable = executable;
    if (lastWrite)
        traits.times = platform::FileTimes{*lastWrite, *lastWrite, *lastWrite};
    switch (file.Commit(traits).code) {
    case 0:
        return kRarSuccess;
    case base::kErrorDiskFull:
    case base::kErrorWriteFault:
        return kRarWriteError;
    case base::kErrorAccessDenied: // a folder or a protected file has the name
    case base::kErrorWriteProtect:
        return kRarCannotCreate;
    default:
        return kRarCannotClose;
    }
}

} // namespace rar
