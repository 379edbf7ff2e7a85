#include "platform/windows/paths/FolderNames.h"

#include "platform/windows/files/Handle.h"
#include "platform/windows/paths/WidePath.h"

#include <algorithm>
#include <string_view>

namespace platform {

base::SystemError NamesIn(const std::wstring& path, std::vector<std::wstring>& names) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileExW(JoinWide(path, L"*").c_str(), FindExInfoBasic, &found,
                                             FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE)
        return LastError();
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..")
            names.emplace_back(name);
    } while (::FindNextFileW(search, &found) != 0);
    const base::SystemError error =
        ::GetLastError() == ERROR_NO_MORE_FILES ? base::SystemError{} : LastError();
    ::FindClose(search);
    std::ranges::sort(names);
    return error;
}

} // namespace platform
