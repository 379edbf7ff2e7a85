#pragma once

#include "platform/OpenFolder.h"
#include "platform/posix/files/HostFile.h"

#include <sys/stat.h>

namespace platform {

struct OpenedFile::Host {
    HostFile file;

    struct stat status {}; ///< when it was opened
};

/// Gives an open file or folder the times of another one that has this status, and the permissions `mode`. A
/// medium that keeps neither is no failure.
void GiveTraits(const HostFile& file, const struct stat& status, mode_t mode);

} // namespace platform
