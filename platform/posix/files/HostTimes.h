#pragma once

#include "platform/Times.h"

#include <ctime>

namespace platform {

/// A host time as a file time (UTC); moments outside the file time's range become the nearest inside.
FileTime FileTimeFromHost(const timespec& time);

/// A file time (UTC) as the host keeps it.
timespec HostTimeOf(FileTime time);

} // namespace platform
