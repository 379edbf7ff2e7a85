#pragma once

#include "platform/OpenFolder.h"
#include "platform/posix/files/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace platform {

struct OpenedFile::Host {
    HostFile file;

    struct stat status {}; ///< when it was opened
};

struct FileCopy::Host {
    TemporaryFile file;

    explicit Host(int folder) : file(folder, "", O_WRONLY, S_IRUSR | S_IWUSR) {}
};

/// Gives an open file or folder the times and permissions of another one that has this status. A medium that
/// keeps neither is no failure.
void KeepTraits(const HostFile& file, const struct stat& status);

} // namespace platform
