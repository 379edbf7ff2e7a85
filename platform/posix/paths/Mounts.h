#pragma once

#include "platform/posix/files/HostFile.h"

#include <string>
#include <vector>

namespace platform {

/// Tells whether file systems have been mounted or unmounted since the last question.
class MountWatch {
  public:
    MountWatch();

    /// Returns true at the first call, and always where the system offers no notification.
    bool HasChanged();

  private:
    HostFile file_;
    bool asked_ = false;
};

/// The folders on which removable media are mounted now, in mount order.
std::vector<std::string> RemovableMounts();

/// One line of a mount table.
struct Mount {
    std::string device; ///< "major:minor"; major 0 where a file system has no block device of its own
    std::string root;   ///< the part of the file system that is mounted
    std::string folder;
    std::string source; ///< what was mounted, such as "/dev/sdb1"
};

/// Reads a mount table in the form of proc(5), mountinfo, with its octal escapes resolved.
std::vector<Mount> ParseMounts(const std::string& table);

/// Whether the block device whose sysfs folder is `sysFolder` is a removable or a USB disk, a part of one,
/// or lies, as an unlocked encrypted medium does, on one.
bool IsRemovableDevice(const std::string& sysFolder);

} // namespace platform
