#include "ui/common/ShellCopy.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "platform/FileOperations.h"
#include "ui/common/FileWork.h"
#include "ui/desktop/SystemShell.h"

#include <optional>

namespace ui {
namespace {

std::string WithoutLastBackslash(std::string path) {
    if (path.size() > 3 && path.ends_with('\\'))
        path.pop_back();
    return path;
}

} // namespace

bool ShellCopy(const std::string& from, const std::string& toFolder) {
    const std::string source = WithoutLastBackslash(from);
    std::optional<FileWork> own;
    if (FileWork::Current() == nullptr)
        own.emplace(FileWork::Kind::kCopy, std::vector<std::string>{source});
    FileWork& work = *FileWork::Current();
    if (work.WasStopped())
        return false;
    if (platform::IsWithin(source, toFolder)) {
        work.FailedBecause(source, app::LoadText(IDS_COPY_INTO_ITSELF));
        return false;
    }
    const ShellAnswer answer = AskShell(ShellWork::kCopy, source, toFolder);
    if (answer != ShellAnswer::kNotTaken)
        return work.HasTaken(answer);
    return platform::CopyTree(source, toFolder, work) == base::Outcome::kDone;
}

bool ShellRename(const std::string& from, const std::string& to) {
    const std::string source = WithoutLastBackslash(from);
    const ShellAnswer answer = AskShell(ShellWork::kRename, source, to);
    if (answer != ShellAnswer::kNotTaken)
        return answer == ShellAnswer::kDone;
    const base::SystemError error = platform::RenameEntry(source, to);
    if (!error)
        return true;
    app::Messages().Show({IDS_NOT_RENAMED,
                          app::LoadText(IDS_NOT_RENAMED) + "\n\n" + from + "\n" + error.Description(),
                          app::kMessageError, app::LoadText(IDS_ERROR_TITLE)});
    return false;
}

} // namespace ui
