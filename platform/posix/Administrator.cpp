#include "platform/Process.h"

#include <algorithm>
#include <grp.h>
#include <unistd.h>
#include <vector>

namespace platform {
namespace {

std::vector<gid_t> GroupsOfProcess() {
    const int count = ::getgroups(0, nullptr);
    std::vector<gid_t> groups(count > 0 ? static_cast<std::size_t>(count) : 0);
    const int filled = ::getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(filled > 0 ? static_cast<std::size_t>(filled) : 0);
    groups.push_back(::getegid());
    return groups;
}

} // namespace

bool IsNTAdmin() {
    if (::geteuid() == 0)
        return true;
    // The groups whose members may become the super-user on the common distributions.
    const std::vector<gid_t> groups = GroupsOfProcess();
    for (const char* name : {"sudo", "wheel", "admin"}) {
        const group* known = ::getgrnam(name);
        if (known != nullptr && std::find(groups.begin(), groups.end(), known->gr_gid) != groups.end())
            return true;
    }
    return false;
}

} // namespace platform
