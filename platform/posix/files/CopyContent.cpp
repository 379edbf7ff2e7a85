#include "platform/posix/files/CopyContent.h"

#include "platform/posix/files/HostError.h"

#include <cerrno>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace platform {
namespace {

constexpr std::size_t kStep = 4U << 20;

bool Clone(const HostFile& from, const HostFile& to) {
    return ::ioctl(to.Descriptor(), FICLONE, from.Descriptor()) == 0;
}

CopyResult ReadAndWrite(const HostFile& from, const HostFile& to,
                        const std::function<bool(std::uint64_t)>& goOn) {
    std::vector<std::uint8_t> block(kStep);
    std::size_t count = block.size();
    while (count == block.size()) {
        if (const base::SystemError error = ReadFully(from, block, count))
            return {error};
        if (const base::SystemError error = WriteFully(to, {block.data(), count}))
            return {error};
        if (!goOn(count))
            return {{}, true};
    }
    return {};
}

} // namespace

CopyResult CopyContent(const HostFile& from, const HostFile& to, std::uint64_t size,
                       const std::function<bool(std::uint64_t)>& goOn) {
    if (Clone(from, to))
        return {{}, !goOn(size)};
    for (std::uint64_t copied = 0;;) {
        const ssize_t count =
            ::copy_file_range(from.Descriptor(), nullptr, to.Descriptor(), nullptr, kStep, 0);
        if (count < 0 && errno == EINTR)
            continue;
        // Between some file systems the kernel cannot do it, and some of its own files it calls empty.
        if (count <= 0 && copied == 0)
            return ReadAndWrite(from, to, goOn);
        if (count < 0)
            return {ErrorFromErrno(errno, Access::kWrite)};
        if (count == 0)
            return {};
        copied += static_cast<std::uint64_t>(count);
        if (!goOn(static_cast<std::uint64_t>(count)))
            return {{}, true};
    }
}

} // namespace platform
