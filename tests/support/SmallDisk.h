#pragma once

#include <filesystem>
#include <string>
#include <utility>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>
#endif

namespace tests {

/// A file system of 64 KB, or of another size, mounted on an existing folder for the life of the object.
/// Mounting takes a super-user: tests are skipped where IsMounted() is false.
#ifdef _WIN32
class SmallDisk {
  public:
    explicit SmallDisk(const std::filesystem::path&, unsigned = 0) {}

    bool IsMounted() const { return false; }

    bool Protect() const { return false; }

    void PullOut() {}

    std::filesystem::path AfterPulling() const { return {}; }
};
#else
class SmallDisk {
  public:
    explicit SmallDisk(std::filesystem::path folder, unsigned size = 65536) : folder_(std::move(folder)) {
        const std::string option = "size=" + std::to_string(size);
        isMounted_ = ::mount("none", folder_.c_str(), "tmpfs", 0, option.c_str()) == 0;
    }

    ~SmallDisk() {
        if (isMounted_)
            ::umount(folder_.c_str());
        if (pulled_ >= 0)
            ::close(pulled_);
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsMounted() const { return isMounted_; }

    /// Turns the medium's write-protection on, as a switch on a card does; false when files are open for
    /// writing.
    bool Protect() const {
        return ::mount("none", folder_.c_str(), "", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

    /// Takes the medium away, whatever is being done on it. What is on it stays in AfterPulling.
    void PullOut() {
        pulled_ = ::open(folder_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        ::umount2(folder_.c_str(), MNT_DETACH);
        isMounted_ = false;
    }

    std::filesystem::path AfterPulling() const { return "/proc/self/fd/" + std::to_string(pulled_); }

  private:
    std::filesystem::path folder_;
    bool isMounted_ = false;
    int pulled_ = -1;
};
#endif

} // namespace tests
