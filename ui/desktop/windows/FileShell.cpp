#include "app/Messages.h"
#include "base/FileName.h"
#include "base/Letters.h"
#include "base/OutputPathRule.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "platform/HostPath.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/WidePath.h"
#include "ui/desktop/SystemShell.h"
#include "ui/desktop/windows/InputPause.h"

#include <algorithm>
#include <shellapi.h>

namespace ui {
namespace {

// The shell's call takes paths of MAX_PATH units with their NUL; a folder must leave room for a short name.
constexpr std::size_t kLongestPath = MAX_PATH - 1;
constexpr std::size_t kLongestFolder = kLongestPath - 12;

/// Whether the shell takes a name as it stands: it would drop a last dot or blank, open a device, and take
/// "?" for any character.
bool IsPlainName(std::wstring_view name) {
    const std::string text = platform::Utf8OfWide(name);
    return base::IsFileName(text) && base::StaysInTarget(text);
}

/// Whether every component of a host path is such a name.
bool IsPlainPath(const std::wstring& path) {
    const std::size_t volume = path.starts_with(L"\\\\") ? 2 : 3;
    for (std::size_t from = volume; from < path.size();) {
        const std::size_t to = std::min(path.find(L'\\', from), path.size());
        if (!IsPlainName(std::wstring_view(path).substr(from, to - from)))
            return false;
        from = to + 1;
    }
    return true;
}

/// Whether the shell can take all that is in a folder: plain names, no path too long, and no link, of which
/// it does not promise to leave alone what it leads to. `length` is that of the folder's path, at the source
/// or at the target, whichever is longer.
bool TakesAllIn(const std::wstring& folder, std::size_t length) {
    if (length > kLongestFolder)
        return false;
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(platform::JoinWide(folder, L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return true; // the shell tells why
    bool takes = true;
    do {
        const std::wstring_view name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        const std::size_t size = length + 1 + name.size();
        takes = size <= kLongestPath && IsPlainName(name) &&
                !platform::IsLinkTag(found.dwFileAttributes, found.dwReserved0);
        if (takes && (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            takes = TakesAllIn(platform::JoinWide(folder, name), size);
    } while (takes && ::FindNextFileW(search, &found) != 0);
    ::FindClose(search);
    return takes;
}

/// Whether `target` is where the work can end without the shell choosing another name or meaning: copies go
/// into a folder that is there, and a new name is valid and free, or the entry's own in other letters.
bool IsTargetClear(ShellWork work, const std::string& from, const std::string& to) {
    if (work == ShellWork::kCopy)
        return platform::FolderExists(to);
    if (work == ShellWork::kDelete)
        return true;
    return base::IsFileName(base::LastComponent(to)) &&
           (base::EqualsNoCase(from, to) || !platform::FindEntry(to));
}

bool Takes(ShellWork work, const std::string& from, const std::string& to) {
    const std::wstring source = platform::WideOf(platform::HostPathOf(from));
    const std::wstring target = platform::WideOf(platform::HostPathOf(to));
    const auto entry = platform::DescribeLink(platform::WidePathOf(from));
    if (!entry || entry->IsLink() || !IsPlainPath(source) || !IsPlainPath(target) ||
        !IsTargetClear(work, from, to))
        return false;
    std::size_t length = source.size();
    if (work == ShellWork::kCopy)
        length = std::max(length, target.size() + 1 + base::LastComponent(from).size());
    else if (work == ShellWork::kRename)
        length = std::max(length, target.size());
    return length <= kLongestPath && (!entry->IsFolder() || TakesAllIn(platform::WidePathOf(from), length));
}

UINT FunctionOf(ShellWork work) {
    switch (work) {
    case ShellWork::kCopy:
        return FO_COPY;
    case ShellWork::kDelete:
        return FO_DELETE;
    case ShellWork::kRename:
        return FO_RENAME;
    }
    return 0;
}

/// A list of one path, as the shell takes it: a NUL after the path and one after the list.
std::wstring ListOf(const std::string& path) {
    return platform::WideOf(platform::HostPathOf(path)) + L'\0';
}

} // namespace

ShellAnswer AskShell(ShellWork work, const std::string& from, const std::string& to) {
    if (!Takes(work, from, to))
        return ShellAnswer::kNotTaken;
    const std::wstring sources = ListOf(from);
    const std::wstring targets = ListOf(to);
    const std::wstring title = platform::WideOf(app::ProgramTitle());
    SHFILEOPSTRUCTW record{};
    record.wFunc = FunctionOf(work);
    record.pFrom = sources.c_str();
    record.pTo = work == ShellWork::kDelete ? nullptr : targets.c_str();
    record.fFlags = FOF_NOCONFIRMATION | FOF_SIMPLEPROGRESS;
    record.lpszProgressTitle = title.c_str();
    const InputPause pause;
    const int result = ::SHFileOperationW(&record);
    if (record.fAnyOperationsAborted != 0)
        return ShellAnswer::kStopped;
    return result == 0 ? ShellAnswer::kDone : ShellAnswer::kFailed;
}

} // namespace ui
