#include "platform/windows/files/TemporaryFile.h"

#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/WidePath.h"

#include <atomic>
#include <string_view>
#include <vector>

namespace platform {
namespace {

constexpr std::wstring_view kStart = L".pellarion-";
constexpr std::wstring_view kEnd = L".tmp";
constexpr std::size_t kPortion = 4U << 20;

std::wstring FolderOfWide(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

} // namespace

std::wstring TemporaryName() {
    static std::atomic<unsigned> counter{0};
    // The moment tells this name from one that a process of the same number left behind when the power
    // failed.
    return std::wstring(kStart) + std::to_wstring(::GetCurrentProcessId()) + L"-" +
           std::to_wstring(CurrentFileTime().ticks) + L"-" + std::to_wstring(counter++) + std::wstring(kEnd);
}

bool IsTemporaryName(std::wstring_view name) {
    return name.starts_with(kStart) && name.ends_with(kEnd);
}

TemporaryFile TemporaryFile::StartIn(const std::wstring& folder) {
    TemporaryFile temporary;
    std::wstring name = JoinWide(folder, TemporaryName());
    temporary.file_ = Handle(::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                           FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr));
    if (temporary.file_.IsOpen())
        temporary.name_ = std::move(name);
    else
        temporary.error_ = LastError();
    return temporary;
}

TemporaryFile TemporaryFile::StartFor(const std::wstring& target) {
    if (const std::optional<HostEntry> entry = DescribeTarget(target);
        entry && IsProtected(entry->attributes)) {
        TemporaryFile refused;
        refused.error_ = {base::kErrorAccessDenied};
        return refused;
    }
    return StartIn(FolderOfWide(target));
}

TemporaryFile::~TemporaryFile() {
    if (file_.IsOpen())
        DeleteOpenFile(file_);
}

base::SystemError TemporaryFile::Commit(const std::wstring& target, Durability durability) {
    if (durability == Durability::kOnMedium && ::FlushFileBuffers(file_.Get()) == 0)
        return LastError();
    const DWORD before = ::GetFileAttributesW(target.c_str());
    if (before != INVALID_FILE_ATTRIBUTES && IsProtected(before))
        return {base::kErrorAccessDenied};
    if (before != INVALID_FILE_ATTRIBUTES)
        KeepAttributes(file_, before);
    file_.Close();
    DWORD flags = MOVEFILE_REPLACE_EXISTING;
    if (durability == Durability::kOnMedium)
        flags |= MOVEFILE_WRITE_THROUGH;
    if (::MoveFileExW(name_.c_str(), target.c_str(), flags) != 0)
        return {};
    const base::SystemError error = LastError();
    ::DeleteFileW(name_.c_str());
    return error;
}

void KeepAttributes(const Handle& file, std::uint32_t attributes) {
    FILE_BASIC_INFO basic{}; // times of zero stay
    basic.FileAttributes =
        (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) | FILE_ATTRIBUTE_ARCHIVE;
    ::SetFileInformationByHandle(file.Get(), FileBasicInfo, &basic, sizeof basic);
}

void DeleteOpenFile(Handle& file) {
    FILE_DISPOSITION_INFO disposition{TRUE};
    ::SetFileInformationByHandle(file.Get(), FileDispositionInfo, &disposition, sizeof disposition);
    file.Close();
}

CopyResult CopyContent(const Handle& from, const Handle& to,
                       const std::function<bool(std::uint64_t bytes)>& goOn) {
    std::vector<std::uint8_t> buffer(kPortion);
    std::uint64_t offset = 0;
    std::size_t count = 0;
    do {
        if (const base::SystemError error = ReadFullyAt(from, offset, buffer, count))
            return {error, false};
        if (const base::SystemError error = WriteFully(to, std::span(buffer).first(count)))
            return {error, false};
        offset += count;
        if (count != 0 && !goOn(count))
            return {{}, true};
    } while (count == buffer.size());
    return {};
}

void KeepTimes(const Handle& from, const Handle& to) {
    FILETIME created{};
    FILETIME accessed{};
    FILETIME written{};
    if (::GetFileTime(from.Get(), &created, &accessed, &written) != 0)
        ::SetFileTime(to.Get(), &created, &accessed, &written);
}

} // namespace platform
