#pragma once

#include <string>
#include <vector>

namespace platform {

/// Tells whether file systems have been mounted or unmounted since the last question.
class MountWatch {
  public:
    MountWatch();
    ~MountWatch();
    MountWatch(const MountWatch&) = delete;
    MountWatch& operator=(const MountWatch&) = delete;

    /// True at the first call, and always where the host offers no notice.
    bool HasChanged();

  private:
    int file_;
    bool asked_ = false;
};

/// The folders on which removable media are mounted now, in mount order.
std::vector<std::string> RemovableMounts();

/// One line of a mount table.
struct Mount {
    std::string device; ///< "major:minor"
    std::string root;   ///< the part of the file system that is mounted
    std::string folder;
};

/// Reads a mount table in the form of proc(5), mountinfo, with its octal escapes resolved.
std::vector<Mount> ParseMounts(const std::string& table);

/// Whether the block device whose sysfs folder is `sysFolder` is, or is a part of, a removable or a USB disk.
bool IsRemovableDevice(const std::string& sysFolder);

} // namespace platform
