#include "platform/FindFiles.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/WidePath.h"

#include <cwchar>

namespace platform {
namespace {

/// Describes an entry of the host folder `folder` from what its listing tells.
FindData DataOf(const WIN32_FIND_DATAW& found, const std::wstring& folder) {
    FindData data;
    // As the ANSI services show it: "?" for each character that the code page lacks.
    data.name = AnsiToUtf8(Utf8ToAnsi(Utf8OfWide(found.cFileName)));
    data.attributes = KnownAttributes(found.dwFileAttributes);
    data.sizeHigh = found.nFileSizeHigh;
    data.sizeLow = found.nFileSizeLow;
    data.lastWrite = FileTimeFromHost(found.ftLastWriteTime);
    if (!IsLinkTag(found.dwFileAttributes, found.dwReserved0))
        return data;
    if (const auto target = DescribeTarget(JoinWide(folder, found.cFileName))) {
        data.attributes = target->attributes;
        data.sizeHigh = target->IsFolder() ? 0 : static_cast<std::uint32_t>(target->identity.size >> 32);
        data.sizeLow = target->IsFolder() ? 0 : static_cast<std::uint32_t>(target->identity.size);
        data.lastWrite = target->identity.lastWrite;
    }
    data.attributes |= kAttributeReparsePoint;
    return data;
}

class HostFindFiles final : public FindFiles {
  public:
    HostFindFiles(HANDLE search, const WIN32_FIND_DATAW& first, std::wstring folder)
        : search_(search), found_(first), folder_(std::move(folder)) {}

    ~HostFindFiles() override { ::FindClose(search_); }

    HostFindFiles(const HostFindFiles&) = delete;
    HostFindFiles& operator=(const HostFindFiles&) = delete;

    bool Next(FindData& data) override {
        if (!hasFound_)
            return false;
        data = DataOf(found_, folder_);
        hasFound_ = ::FindNextFileW(search_, &found_) != 0;
        return true;
    }

  private:
    HANDLE search_;
    WIN32_FIND_DATAW found_;
    std::wstring folder_;
    bool hasFound_ = true;
};

HANDLE StartSearch(const std::wstring& pattern, WIN32_FIND_DATAW& found) {
    return ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                              FIND_FIRST_EX_LARGE_FETCH);
}

/// The root of a drive stands in no folder's listing.
std::optional<FindData> RootData(const std::wstring& root) {
    const auto entry = DescribeTarget(root);
    if (!entry)
        return std::nullopt;
    FindData data;
    data.attributes = kAttributeDirectory;
    data.lastWrite = entry->identity.lastWrite;
    return data;
}

} // namespace

std::optional<FindData> FindEntry(const std::string& path) {
    const std::wstring host = WidePathOf(path);
    if (host.empty())
        return std::nullopt;
    if (host.ends_with(L'\\'))
        return RootData(host);
    if (host.find_first_of(L"*?", 4) != std::wstring::npos)
        return std::nullopt;
    WIN32_FIND_DATAW found{};
    const HANDLE search = StartSearch(host, found);
    if (search == INVALID_HANDLE_VALUE)
        return std::nullopt;
    ::FindClose(search);
    if (!GetFileAttributes(path))
        return std::nullopt; // a link that leads nowhere
    return DataOf(found, host.substr(0, host.find_last_of(L'\\')));
}

std::unique_ptr<FindFiles> FindFiles::Start(const std::string& folder, base::SystemError& error) {
    std::wstring host = WidePathOf(folder);
    error = {base::kErrorPathNotFound};
    if (host.empty())
        return nullptr;
    WIN32_FIND_DATAW found{};
    const HANDLE search = StartSearch(JoinWide(host, L"*"), found);
    if (search != INVALID_HANDLE_VALUE) {
        error = {};
        return std::make_unique<HostFindFiles>(search, found, std::move(host));
    }
    error = LastError();
    const DWORD attributes = ::GetFileAttributesW(host.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        error = {base::kErrorFolderInvalid};
    else if (error.code == base::kErrorFileNotFound)
        error = {base::kErrorPathNotFound};
    return nullptr;
}

} // namespace platform
