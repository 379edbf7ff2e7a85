#include "platform/Files.h"
#include "platform/TreeWork.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/FolderNames.h"
#include "platform/windows/paths/WidePath.h"

namespace platform {
namespace {

class TreeDeletion {
  public:
    explicit TreeDeletion(FileOperationObserver& observer) : work_(observer) {}

    FileOutcome Run(const std::wstring& host, const std::string& path) {
        DeleteEntry(host, path);
        return work_.Outcome();
    }

  private:
    void DeleteEntry(const std::wstring& host, const std::string& path) {
        if (!work_.Proceed(path))
            return;
        const std::optional<HostEntry> entry = DescribeLink(host);
        const std::size_t failuresBefore = work_.Failures();
        if (!entry)
            work_.Fail(path, LastError());
        else if (entry->IsFolder() && !entry->IsLink())
            DeleteEntries(host, path);
        // What could not be deleted inside has been told already.
        if (!work_.IsStopped() && work_.Failures() == failuresBefore && !DeleteItself(host, *entry))
            work_.Fail(path, LastError());
        if (!work_.IsStopped())
            work_.Proceed(path, 1);
    }

    /// Deletes a file, an empty folder, or a link, which neither call follows. The read-only mark does not
    /// keep it: the person has chosen to delete it.
    static bool DeleteItself(const std::wstring& host, const HostEntry& entry) {
        if ((entry.attributes & kAttributeReadOnly) != 0)
            ::SetFileAttributesW(host.c_str(), FILE_ATTRIBUTE_NORMAL);
        return (entry.IsFolder() ? ::RemoveDirectoryW(host.c_str()) : ::DeleteFileW(host.c_str())) != 0;
    }

    void DeleteEntries(const std::wstring& host, const std::string& path) {
        std::vector<std::wstring> names;
        if (const base::SystemError error = NamesIn(host, names)) {
            work_.Fail(path, error);
            return;
        }
        for (const std::wstring& name : names) {
            if (work_.IsStopped())
                return;
            DeleteEntry(JoinWide(host, name), path + '\\' + Utf8OfWide(name));
        }
    }

    TreeWork work_;
};

} // namespace

FileOutcome DeleteTree(const std::string& path, FileOperationObserver& observer) {
    const std::wstring host = WidePathOf(path);
    if (host.empty() || host.ends_with(L'\\')) {
        observer.Failed(path, {base::kErrorPathNotFound});
        return FileOutcome::kFailed;
    }
    return TreeDeletion(observer).Run(host, path);
}

} // namespace platform
