#include "platform/posix/paths/FolderNames.h"

#include "platform/posix/files/HostError.h"
#include "platform/posix/files/HostFile.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>

namespace platform {

base::SystemError NamesIn(int folder, std::vector<std::string>& names) {
    // A descriptor of its own for the listing to close; a folder that may only be listed cannot be opened by
    // way of its ".".
    const int own = ::fcntl(folder, F_DUPFD_CLOEXEC, 0);
    DIR* listing = own < 0 ? nullptr : ::fdopendir(own);
    if (!listing) {
        // A folder that may be entered but not listed is open in a way that cannot be read.
        const base::SystemError error = ErrorFromErrno(errno == EBADF ? EACCES : errno);
        const HostFile closing(own);
        return error;
    }
    ::rewinddir(listing); // both descriptors have one position
    errno = 0;
    while (const dirent* entry = ::readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
        errno = 0;
    }
    const base::SystemError error = ErrorFromErrno(errno);
    ::closedir(listing);
    std::ranges::sort(names);
    return error;
}

} // namespace platform
