#include "base/FileName.h"
#include "base/Letters.h"
#include "platform/FileOperations.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

/// The path of a file or folder with every link in it resolved; empty when it cannot be opened.
std::string Resolved(const std::string& path) {
    const Handle entry = OpenToAsk(WidePathOf(path));
    if (!entry.IsOpen())
        return "";
    std::wstring name(32768, L'\0');
    name.resize(::GetFinalPathNameByHandleW(entry.Get(), name.data(), static_cast<DWORD>(name.size()), 0));
    return Utf8OfWide(name);
}

} // namespace

base::SystemError RenameEntry(const std::string& from, const std::string& to) {
    const std::wstring source = WidePathOf(from);
    const std::wstring folder = WidePathOf(std::string(base::FolderOf(to)));
    const std::string_view name = base::LastComponent(to);
    if (source.empty() || folder.empty())
        return {base::kErrorPathNotFound};
    if (!base::IsFileName(name))
        return {base::kErrorInvalidName};
    const std::optional<HostEntry> entry = DescribeLink(source);
    if (!entry)
        return LastError();
    const std::wstring target = JoinWide(folder, WideOf(name));
    // In any letter case a name is taken, unless it is the entry's own.
    const std::optional<HostEntry> taken = DescribeLink(target);
    if (taken && !(taken->IsSameFile(*entry) && base::EqualsNoCase(name, base::LastComponent(from))))
        return {base::kErrorAlreadyExists};
    return ::MoveFileExW(source.c_str(), target.c_str(), 0) != 0 ? base::SystemError{} : LastError();
}

bool IsWithin(const std::string& folder, const std::string& inner) {
    const std::string outside = Resolved(folder);
    const std::string inside = Resolved(inner);
    if (outside.empty() || inside.empty())
        return false;
    return base::EqualsNoCase(inside, outside) ||
           base::StartsWithNoCase(inside, outside.ends_with('\\') ? outside : outside + '\\');
}

} // namespace platform
