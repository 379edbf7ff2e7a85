#include "ui/common/ShellDelete.h"

#include "platform/FileOperations.h"
#include "platform/Files.h"
#include "ui/common/FileWork.h"
#include "ui/desktop/SystemShell.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace ui {
namespace {

// A path to something inside a drive, walked downwards only. What deletes must be sure of its place.
bool IsInsideDrive(std::string_view path) {
    if (path.size() < 4 || path[1] != ':' || path[2] != '\\')
        return false;
    for (std::size_t from = 3; from <= path.size();) {
        const std::size_t to = std::min(path.find('\\', from), path.size());
        const std::string_view name = path.substr(from, to - from);
        if (name.empty() || name == "." || name == "..")
            return false;
        from = to + 1;
    }
    return true;
}

} // namespace

bool IsFolder(const std::string& path) {
    const auto attributes = platform::GetFileAttributes(path);
    return attributes && (*attributes & platform::kAttributeDirectory) != 0;
}

bool ShellDelete(const std::string& path) {
    // A last backslash would have the system follow a link.
    const std::string bare = path.size() > 3 && path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
    std::optional<FileWork> own;
    if (FileWork::Current() == nullptr)
        own.emplace(FileWork::Kind::kDelete, std::vector<std::string>{bare});
    FileWork& work = *FileWork::Current();
    if (work.WasStopped())
        return false;
    if (!IsInsideDrive(bare)) {
        work.Failed(path, {base::kErrorAccessDenied});
        return false;
    }
    const ShellAnswer answer = AskShell(ShellWork::kDelete, bare);
    if (answer != ShellAnswer::kNotTaken)
        return work.HasTaken(answer);
    return platform::DeleteTree(bare, work) == base::Outcome::kDone;
}

bool ShellDeleteFolder(const std::string& path) {
    return ShellDelete(path.ends_with('\\') ? path.substr(0, path.size() - 1) : path);
}

} // namespace ui
