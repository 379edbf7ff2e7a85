#pragma once

#include "platform/OpenFolder.h"
#include "platform/posix/files/HostFile.h"

#include <cstdint>
#include <functional>

namespace platform {

/// Puts the bytes of `from`, whose length is about `size`, into the empty file `to`: as a clone where the
/// file system shares blocks, else inside the kernel where it can, else by reading and writing. `goOn` is
/// told of every few megabytes done; false stops the copy.
CopyResult CopyContent(const HostFile& from, const HostFile& to, std::uint64_t size,
                       const std::function<bool(std::uint64_t bytes)>& goOn);

} // namespace platform
