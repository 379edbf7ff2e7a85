#include "base/SystemError.h"

namespace base {

std::string SystemError::Description() const {
    switch (code) {
    case 0:
        return "The operation completed successfully.";
    case kErrorFileNotFound:
        return "The system cannot find the file specified.";
    case kErrorPathNotFound:
        return "The system cannot find the path specified.";
    case kErrorTooManyOpenFiles:
        return "The system cannot open the file.";
    case kErrorAccessDenied:
        return "Access is denied.";
    case kErrorNotEnoughMemory:
        return "There is not enough memory to process this command.";
    case kErrorInvalidData:
        return "The data is invalid.";
    case kErrorNotSameDevice:
        return "The system cannot move the file to a different disk drive.";
    case kErrorWriteProtect:
        return "The media is write protected.";
    case kErrorNotReady:
        return "The device is not ready.";
    case kErrorCrc:
        return "Data error (cyclic redundancy check).";
    case kErrorWriteFault:
        return "The system cannot write to the specified device.";
    case kErrorReadFault:
        return "The system cannot read from the specified device.";
    case kErrorGeneralFailure:
        return "A device attached to the system is not functioning.";
    case kErrorSharingViolation:
        return "The file is in use by another program.";
    case kErrorFileExists:
        return "The file exists.";
    case kErrorDiskFull:
        return "There is not enough space on the disk.";
    case kErrorInvalidName:
        return "The file name, folder name or drive name is not valid.";
    case kErrorFolderNotEmpty:
        return "The folder is not empty.";
    case kErrorBadPathName:
        return "The specified path is not valid.";
    case kErrorAlreadyExists:
        return "A file or folder of that name exists already.";
    case kErrorBadExeFormat:
        return "The file is not a valid library.";
    case kErrorNameTooLong:
        return "The file name or extension is too long.";
    case kErrorFileTooLarge:
        return "The file is larger than the file system allows.";
    case kErrorFolderInvalid:
        return "The folder name is not valid.";
    default:
        return "System error " + std::to_string(code) + ".";
    }
}

} // namespace base
