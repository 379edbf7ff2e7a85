#include "platform/windows/files/OpenBelow.h"

#include <algorithm>
#include <cstring>
#include <vector>
#include <winternl.h>

namespace platform {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestPath = 32767;

bool IsTooLong(std::wstring_view path) {
    std::size_t start = 0;
    for (std::size_t end = 0; end != std::wstring_view::npos; start = end + 1) {
        end = path.find(L'\\', start);
        if (std::min(end, path.size()) - start > kLongestName)
            return true;
    }
    return path.size() > kLongestPath;
}

base::SystemError ErrorOf(NTSTATUS status) {
    ::SetLastError(::RtlNtStatusToDosError(status));
    return LastError();
}

} // namespace

Handle OpenBelow(const Handle& folder, std::wstring_view name, const OpenMode& mode,
                 base::SystemError& error) {
    error = {base::kErrorNameTooLong};
    if (IsTooLong(name))
        return Handle();
    const auto bytes = static_cast<USHORT>(name.size() * sizeof(wchar_t));
    UNICODE_STRING text{bytes, bytes, const_cast<wchar_t*>(name.data())};
    OBJECT_ATTRIBUTES attributes{};
    InitializeObjectAttributes(&attributes, &text, OBJ_CASE_INSENSITIVE, folder.Get(), nullptr);
    HANDLE opened = INVALID_HANDLE_VALUE;
    IO_STATUS_BLOCK block{};
    const NTSTATUS status = ::NtCreateFile(&opened, mode.access | SYNCHRONIZE, &attributes, &block, nullptr,
                                           FILE_ATTRIBUTE_NORMAL, mode.share, mode.disposition,
                                           mode.options | FILE_SYNCHRONOUS_IO_NONALERT, nullptr, 0);
    error = status >= 0 ? base::SystemError{} : ErrorOf(status);
    if (error.code == base::kErrorAlreadyExists)
        error = {base::kErrorFileExists};
    return error ? Handle() : Handle(opened);
}

base::SystemError MoveBelow(const Handle& file, const Handle& folder, std::wstring_view name) {
    const std::size_t bytes = name.size() * sizeof(wchar_t);
    // As large as its record and the name, whose first letter stands in the record.
    std::vector<std::uint64_t> space((sizeof(FILE_RENAME_INFORMATION) + bytes) / sizeof(std::uint64_t) + 1);
    auto* record = reinterpret_cast<FILE_RENAME_INFORMATION*>(space.data());
    record->ReplaceIfExists = TRUE;
    record->RootDirectory = folder.Get();
    record->FileNameLength = static_cast<ULONG>(bytes);
    std::memcpy(record->FileName, name.data(), bytes);
    IO_STATUS_BLOCK block{};
    const NTSTATUS status = ::NtSetInformationFile(file.Get(), &block, record,
                                                   static_cast<ULONG>(space.size() * sizeof(std::uint64_t)),
                                                   FileRenameInformation);
    return status >= 0 ? base::SystemError{} : ErrorOf(status);
}

} // namespace platform
