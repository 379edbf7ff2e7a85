#include "platform/posix/files/HostError.h"

#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <sys/stat.h>

namespace platform {

SystemError ErrorFromErrno(int number, Access access) {
    switch (number) {
    case 0:
        return {};
    case ENOENT:
        return {kErrorFileNotFound};
    case ENOTDIR:
        return {kErrorPathNotFound};
    case EACCES:
    case EPERM:
    case EISDIR:
        return {kErrorAccessDenied};
    case EROFS:
        return {kErrorWriteProtect};
    case ENOSPC:
    case EDQUOT:
        return {kErrorDiskFull};
    case EFBIG:
        return {kErrorFileTooLarge};
    case EEXIST:
        return {kErrorAlreadyExists};
    case ENOTEMPTY:
        return {kErrorFolderNotEmpty};
    case EMFILE:
    case ENFILE:
        return {kErrorTooManyOpenFiles};
    case ENOMEM:
        return {kErrorNotEnoughMemory};
    case EXDEV:
        return {kErrorNotSameDevice};
    case ENAMETOOLONG:
        return {kErrorNameTooLong};
    case EINVAL:
    case EILSEQ:
        return {kErrorInvalidName};
    case ELOOP:
        return {kErrorBadPathName};
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
        return {kErrorSharingViolation};
    case ENODEV:
    case ENXIO:
    case ENOMEDIUM:
        return {kErrorNotReady};
    case EIO:
        return {access == Access::kWrite ? kErrorWriteFault : kErrorReadFault};
    default:
        return {kErrorGeneralFailure};
    }
}

SystemError ErrorForPath(int number, const std::string& hostPath, Access access) {
    if (number == ENOENT) {
        struct stat status {};

        if (::stat(ParentOf(hostPath).c_str(), &status) != 0)
            return {kErrorPathNotFound};
    }
    return ErrorFromErrno(number, access);
}

} // namespace platform
