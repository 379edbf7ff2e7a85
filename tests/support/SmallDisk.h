#pragma once

#include <filesystem>
#include <sys/mount.h>
#include <utility>

namespace tests {

/// A file system of 64 KB, mounted on an existing folder for the life of the object. Mounting takes a
/// super-user: tests are skipped where IsMounted() is false.
class SmallDisk {
  public:
    explicit SmallDisk(std::filesystem::path folder) : folder_(std::move(folder)) {
        isMounted_ = ::mount("none", folder_.c_str(), "tmpfs", 0, "size=65536") == 0;
    }

    ~SmallDisk() {
        if (isMounted_)
            ::umount(folder_.c_str());
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsMounted() const { return isMounted_; }

    /// Turns the medium's write-protection on, as a switch on a card does; false when files are open for
    /// writing.
    bool Protect() const {
        return ::mount("none", folder_.c_str(), "", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

  private:
    std::filesystem::path folder_;
    bool isMounted_ = false;
};

} // namespace tests
