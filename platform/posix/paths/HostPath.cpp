#include "platform/HostPath.h"

#include "platform/Files.h"
#include "platform/posix/paths/DriveTable.h"
#include "platform/posix/paths/FolderCache.h"
#include "platform/posix/paths/HostNames.h"
#include "platform/posix/paths/WorkingFolder.h"

#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace platform {
namespace {

bool Exists(const std::string& hostPath) {
    struct stat status {};

    return ::lstat(hostPath.c_str(), &status) == 0;
}

/// Puts the names that the host has into `components` where only the case differs.
std::string MatchComponents(const std::string& root, std::vector<std::string> components) {
    const std::string exact = JoinHostPath(root, components);
    if (components.empty() || Exists(exact))
        return exact;
    // Walk back to the deepest folder that exists as written, then forward from there by comparing names.
    std::size_t known = components.size() - 1;
    const auto prefix = [&](std::size_t count) {
        return JoinHostPath(root,
                            {components.begin(), components.begin() + static_cast<std::ptrdiff_t>(count)});
    };
    while (known > 0 && !Exists(prefix(known)))
        --known;
    for (; known < components.size(); ++known) {
        const std::string folder = prefix(known);
        std::string& name = components[known];
        if (Exists(folder + "/" + name))
            continue;
        std::string found = FindInFolder(folder, name);
        if (found == name)
            break;
        name = std::move(found);
    }
    return JoinHostPath(root, components);
}

/// `hostPath` below `root`, or nothing when it is not there.
std::optional<std::string_view> Below(std::string_view hostPath, std::string_view root) {
    if (root == "/")
        return hostPath.substr(1);
    if (!hostPath.starts_with(root))
        return std::nullopt;
    const std::string_view rest = hostPath.substr(root.size());
    if (rest.empty())
        return rest;
    return rest[0] == '/' ? std::optional(rest.substr(1)) : std::nullopt;
}

std::string WithHostNames(std::string path, std::string_view below) {
    for (const std::string& name : base::SplitComponents(below, "/")) {
        if (path.back() != '\\')
            path.push_back('\\');
        path += TextOfHostName(name);
    }
    return path;
}

/// A root of the drive table beside its path in this program's form.
struct Root {
    std::string host;
    std::string path;
};

std::vector<Root> Roots() {
    std::vector<Root> roots;
    for (const DriveEntry& drive : DriveTable())
        roots.push_back({drive.root, std::string(1, drive.letter) + ":\\"});
    if (std::string working = WorkingFolderRoot(); !working.empty())
        roots.push_back({std::move(working), WorkingFolderPath()});
    return roots;
}

std::string FindRoot(const std::string& hostPath, const std::vector<Root>& roots) {
    const Root* best = nullptr;
    for (const Root& root : roots) {
        if (Below(hostPath, root.host) && (best == nullptr || root.host.size() > best->host.size()))
            best = &root;
    }
    return best == nullptr ? "" : WithHostNames(best->path, *Below(hostPath, best->host));
}

/// `hostPath` with its links resolved as far as it exists; itself when that fails.
std::string Resolved(const std::string& hostPath) {
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(hostPath, error);
    return error || resolved.empty() ? hostPath : resolved.string();
}

std::string HostCurrentFolder() {
    std::error_code error;
    const std::string folder = std::filesystem::current_path(error).string();
    return error ? "/" : folder;
}

} // namespace

std::string PathFromHost(std::string_view hostPath) {
    if (hostPath.empty() || hostPath.find('\0') != std::string_view::npos)
        return "";
    std::string absolute(hostPath);
    if (absolute[0] != '/')
        absolute = HostCurrentFolder() + "/" + absolute;
    absolute = JoinHostPath("/", base::SplitComponents(absolute, "/"));
    std::vector<Root> roots = Roots();
    std::string path = FindRoot(absolute, roots);
    if (!path.empty())
        return path;
    // A root may have been given by way of a link.
    for (Root& root : roots)
        root.host = Resolved(root.host);
    return FindRoot(Resolved(absolute), roots);
}

std::string HostPathOf(std::string_view path) {
    if (path.size() < 2 || path[1] != ':' || path.find('\0') != std::string_view::npos)
        return "";
    const DriveEntry* drive = FindDrive(path[0]);
    if (drive == nullptr)
        return "";
    std::vector<std::string> components = base::SplitComponents(path.substr(2), "\\/");
    std::string root = drive->root;
    if (drive->letter == 'C' && !components.empty() && IsWorkingFolderName(components[0])) {
        if (std::string working = WorkingFolderRoot(); !working.empty()) {
            root = std::move(working);
            components.erase(components.begin());
        }
    }
    for (std::string& name : components)
        name = HostNameOf(name);
    return MatchComponents(root, std::move(components));
}

std::string CurrentFolder() {
    std::string folder = PathFromHost(HostCurrentFolder());
    // A current folder on no drive of the table still has to be a folder.
    return folder.empty() ? "C:\\" : folder;
}

} // namespace platform
