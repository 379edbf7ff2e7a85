#pragma once

#include "platform/OpenFolder.h"
#include "platform/posix/files/HostFile.h"

#include <cstdint>
#include <functional>

namespace platform {

/// Copies the bytes of `from`, whose length is about `size`, into the empty file `to`. Where the file system
/// can share blocks between files, they are shared; otherwise the kernel copies where it can, and else the
/// bytes are read and written. `goOn` is called every few megabytes; when it returns false, the copy stops.
CopyResult CopyContent(const HostFile& from, const HostFile& to, std::uint64_t size,
                       const std::function<bool(std::uint64_t bytes)>& goOn);

} // namespace platform
