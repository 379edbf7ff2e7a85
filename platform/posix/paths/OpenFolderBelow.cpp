#include "platform/posix/paths/OpenFolderBelow.h"

#include "platform/posix/paths/HostNames.h"

#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#if __has_include(<linux/openat2.h>)
#include <linux/openat2.h>
#endif

namespace platform {

HostFile OpenFolderBelow([[maybe_unused]] const HostFile& folder, [[maybe_unused]] std::string_view path) {
#ifdef SYS_openat2
    std::string host;
    for (const std::string& name : base::SplitComponents(path, "\\/"))
        host += (host.empty() ? "" : "/") + HostNameOf(name);
    if (host.empty())
        return {};
    open_how how{};
    how.flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
    return HostFile(
        static_cast<int>(::syscall(SYS_openat2, folder.Descriptor(), host.c_str(), &how, sizeof how)));
#else
    return {};
#endif
}

} // namespace platform
