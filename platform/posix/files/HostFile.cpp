#include "platform/posix/files/HostFile.h"

#include "platform/posix/files/HostError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace platform {
namespace {

constexpr std::size_t kLargestTransfer = 0x4000'0000; // under the kernel's limit of one call

/// Calls `transfer(position, size)` until `size` bytes are done, it returns 0, or it fails.
template <typename Transfer>
base::SystemError TransferAll(std::size_t size, Access access, std::size_t& count, Transfer transfer) {
    count = 0;
    while (count < size) {
        const ssize_t done = transfer(count, std::min(size - count, kLargestTransfer));
        if (done < 0 && errno == EINTR)
            continue;
        if (done < 0)
            return ErrorFromErrno(errno, access);
        if (done == 0)
            break;
        count += static_cast<std::size_t>(done);
    }
    return {};
}

template <typename Transfer>
base::SystemError WriteAll(std::size_t size, Transfer transfer) {
    std::size_t count = 0;
    const base::SystemError error = TransferAll(size, Access::kWrite, count, transfer);
    return !error && count < size ? base::SystemError{base::kErrorWriteFault} : error;
}

} // namespace

base::SystemError HostFile::Close() {
    if (descriptor_ < 0)
        return {};
    const int result = ::close(std::exchange(descriptor_, -1));
    return result == 0 || errno == EINTR ? base::SystemError{} : ErrorFromErrno(errno, Access::kWrite);
}

HostFile OpenForReading(int folder, const std::string& name, int flags, struct stat& status,
                        base::SystemError& error) {
    // Not blocking, so that a pipe without a writer is refused instead of waited for.
    HostFile file(::openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | flags));
    if (!file.IsOpen()) {
        // What has no device behind it is a socket: the medium itself is well.
        error = errno == ENXIO ? base::SystemError{base::kErrorAccessDenied} : ErrorFromErrno(errno);
        return {};
    }
    if (::fstat(file.Descriptor(), &status) != 0 || !S_ISREG(status.st_mode)) {
        error = {base::kErrorAccessDenied};
        return {};
    }
    error = {};
    return file;
}

HostFile OpenForReading(const std::string& hostPath, struct stat& status, base::SystemError& error) {
    HostFile file = OpenForReading(AT_FDCWD, hostPath, 0, status, error);
    // A missing file is told apart from a missing folder.
    if (error.code == base::kErrorFileNotFound)
        error = ErrorForPath(ENOENT, hostPath);
    return file;
}

base::SystemError ReadFully(const HostFile& file, std::span<std::uint8_t> buffer, std::size_t& count) {
    return TransferAll(buffer.size(), Access::kRead, count, [&](std::size_t position, std::size_t size) {
        return ::read(file.Descriptor(), buffer.data() + position, size);
    });
}

base::SystemError ReadFullyAt(const HostFile& file, std::uint64_t offset, std::span<std::uint8_t> buffer,
                              std::size_t& count) {
    count = 0;
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()) - buffer.size())
        return {};
    return TransferAll(buffer.size(), Access::kRead, count, [&](std::size_t position, std::size_t size) {
        return ::pread(file.Descriptor(), buffer.data() + position, size,
                       static_cast<off_t>(offset + position));
    });
}

base::SystemError WriteFully(const HostFile& file, std::span<const std::uint8_t> data) {
    return WriteAll(data.size(), [&](std::size_t position, std::size_t size) {
        return ::write(file.Descriptor(), data.data() + position, size);
    });
}

base::SystemError WriteFullyAt(const HostFile& file, std::uint64_t offset,
                               std::span<const std::uint8_t> data) {
    return WriteAll(data.size(), [&](std::size_t position, std::size_t size) {
        return ::pwrite(file.Descriptor(), data.data() + position, size,
                        static_cast<off_t>(offset + position));
    });
}

std::string ReadHostText(const std::string& hostPath) {
    const HostFile file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text;
    std::array<std::uint8_t, 16384> block;
    std::size_t count = block.size();
    while (file.IsOpen() && count == block.size() && !ReadFully(file, block, count))
        text.append(reinterpret_cast<const char*>(block.data()), count);
    return text;
}

} // namespace platform
