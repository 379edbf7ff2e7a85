#include "Entry.h"
#include "FolderNames.h"
#include "Wide.h"
#include "WidePath.h"
#include "platform/FileOperations.h"
#include "platform/Files.h"

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
        const std::optional<HostEntry> entry = DescribeLink(host);
        const std::size_t failuresBefore = failures_;
        if (!entry)
            Fail(path, LastError());
        else if (entry->IsFolder() && !entry->IsLink())
            DeleteEntries(host, path);
        // What could not be deleted inside has been told already.
        if (!isStopped_ && failures_ == failuresBefore && !DeleteItself(host, *entry))
            Fail(path, LastError());
        if (!isStopped_)
            Proceed(path, 1);
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
