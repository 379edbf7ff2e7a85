#include "Entry.h"
#include "FolderNames.h"
#include "Wide.h"
#include "WidePath.h"
#include "platform/FileOperations.h"

namespace platform {
namespace {

class TreeDeletion {
  public:
    explicit TreeDeletion(FileOperationObserver& observer) : observer_(observer) {}

    FileOutcome Run(const std::wstring& host, const std::string& path) {
        DeleteEntry(host, path);
        if (isStopped_)
            return FileOutcome::kStopped;
        return failures_ > 0 ? FileOutcome::kFailed : FileOutcome::kDone;
    }

  private:
    bool Proceed(const std::string& path, std::uint64_t entries) {
        if (!observer_.Proceed({path, entries, 0}))
            isStopped_ = true;
        return !isStopped_;
    }

    void Fail(const std::string& path, SystemError error) {
        ++failures_;
        observer_.Failed(path, error);
    }

    void DeleteEntry(const std::wstring& host, const std::string& path) {
        if (!Proceed(path, 0))
            return;
        // Opened by itself, a link is never followed.
        Handle entry(::CreateFileW(host.c_str(), DELETE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES,
                                   kShareAll, nullptr, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        const std::optional<HostEntry> described = DescribeHandle(entry);
        if (!described) {
            Fail(path, LastError());
            return;
        }
        const std::size_t failuresBefore = failures_;
        if (described->IsFolder() && !described->IsLink())
            DeleteEntries(host, path);
        // What could not be deleted inside has been told already.
        if (!isStopped_ && failures_ == failuresBefore)
            DeleteOpened(entry, path);
        entry.Close();
        if (!isStopped_)
            Proceed(path, 1);
    }

    void DeleteEntries(const std::wstring& host, const std::string& path) {
        std::vector<std::wstring> names;
        if (const SystemError error = NamesIn(host, names)) {
            Fail(path, error);
            return;
        }
        for (const std::wstring& name : names) {
            if (isStopped_)
                return;
            DeleteEntry(JoinWide(host, name), path + '\\' + Utf8OfWide(name));
        }
    }

    /// Deletes what is open; the read-only mark does not keep it, as the person has chosen to delete it.
    void DeleteOpened(const Handle& entry, const std::string& path) {
        FILE_BASIC_INFO basic{};
        if (::GetFileInformationByHandleEx(entry.Get(), FileBasicInfo, &basic, sizeof basic) != 0 &&
            (basic.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
            basic = {};
            basic.FileAttributes = FILE_ATTRIBUTE_NORMAL;
            ::SetFileInformationByHandle(entry.Get(), FileBasicInfo, &basic, sizeof basic);
        }
        FILE_DISPOSITION_INFO disposition{TRUE};
        if (::SetFileInformationByHandle(entry.Get(), FileDispositionInfo, &disposition,
                                         sizeof disposition) == 0)
            Fail(path, LastError());
    }

    FileOperationObserver& observer_;
    std::size_t failures_ = 0;
    bool isStopped_ = false;
};

} // namespace

FileOutcome DeleteTree(const std::string& path, FileOperationObserver& observer) {
    const std::wstring host = WidePathOf(path);
    if (host.empty() || host.ends_with(L'\\')) {
        observer.Failed(path, {kErrorPathNotFound});
        return FileOutcome::kFailed;
    }
    return TreeDeletion(observer).Run(host, path);
}

} // namespace platform
