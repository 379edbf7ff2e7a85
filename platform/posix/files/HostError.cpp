#include "platform/posix/files/HostError.h"

#include "platform/posix/paths/HostNames.h"

#include <cerrno>
#include <sys/stat.h>

namespace platform {

base::SystemError ErrorFromErrno(int number, Access access) {
    switch (number) {
    case 0:
        return {};
    case ENOENT:
        return {base::kErrorFileNotFound};
    case ENOTDIR:
        return {base::kErrorPathNotFound};
    case EACCES:
    case EPERM:
    case EISDIR:
        return {base::kErrorAccessDenied};
    case EROFS:
        return {base::kErrorWriteProtect};
    case ENOSPC:
    case EDQUOT:
        return {base::kErrorDiskFull};
    case EFBIG:
        return {base::kErrorFileTooLarge};
    case EEXIST:
        return {base::kErrorAlreadyExists};
    case ENOTEMPTY:
        return {base::kErrorFolderNotEmpty};
    case EMFILE:
    case ENFILE:
        return {base::kErrorTooManyOpenFiles};
    case ENOMEM:
        return {base::kErrorNotEnoughMemory};
    case EXDEV:
        return {base::kErrorNotSameDevice};
    case ENAMETOOLONG:
        return {base::kErrorNameTooLong};
    case EINVAL:
    case EILSEQ:
        return {base::kErrorInvalidName};
    case ELOOP:
        return {base::kErrorBadPathName};
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
        return {base::kErrorSharingViolation};
    case ENODEV:
    case ENXIO:
    case ENOMEDIUM:
        return {base::kErrorNotReady};
    case EIO:
        return {access == Access::kWrite ? base::kErrorWriteFault : base::kErrorReadFault};
    default:
        return {base::kErrorGeneralFailure};
    }
}

base::SystemError ErrorForPath(int number, const std::string& hostPath, Access access) {
    if (number == ENOENT) {
        struct stat status {};

        if (::stat(ParentOf(hostPath).c_str(), &status) != 0)
            return {base::kErrorPathNotFound};
    }
    return ErrorFromErrno(number, access);
}

} // namespace platform
