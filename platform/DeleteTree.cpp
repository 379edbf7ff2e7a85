#include "platform/OpenFolder.h"
#include "platform/TreeWork.h"

namespace platform {
namespace {

/// Deletes through open folders and never by path, so that nothing outside is reached even when someone puts
/// a link in the place of a folder meanwhile.
class TreeDeletion {
  public:
    explicit TreeDeletion(base::WorkObserver& observer) : work_(observer) {}

    base::Outcome Run(const OpenFolder& folder, const EntryName& name, const std::string& path) {
        DeleteEntry(folder, name, path);
        return work_.Outcome();
    }

  private:
    void DeleteEntry(const OpenFolder& folder, const EntryName& name, const std::string& path) {
        if (!work_.Proceed(path))
            return;
        base::SystemError error;
        const std::optional<EntryStatus> status = folder.StatusOf(name, Links::kThemselves, error);
        if (status && status->kind == EntryKind::kFolder)
            DeleteFolder(folder, name, *status, path);
        else if (status)
            error = folder.Remove(name, *status);
        if (error)
            work_.Fail(path, error);
        if (!work_.IsStopped())
            work_.Proceed(path, 1);
    }

    void DeleteFolder(const OpenFolder& folder, const EntryName& name, const EntryStatus& status,
                      const std::string& path) {
        if (folder.IsMountPoint(name)) {
            work_.Fail(path, {base::kErrorSharingViolation});
            return;
        }
        const std::size_t failuresBefore = work_.Failures();
        const base::SystemError listing = DeleteEntries(folder, name, path);
        // What could not be deleted inside has been told already.
        if (work_.IsStopped() || work_.Failures() > failuresBefore)
            return;
        // Even a folder that cannot be listed can be removed when it is empty.
        if (const base::SystemError error = folder.Remove(name, status))
            work_.Fail(path, listing ? listing : error);
    }

    /// Returns why the folder could not be listed.
    base::SystemError DeleteEntries(const OpenFolder& outer, const EntryName& name, const std::string& path) {
        base::SystemError error;
        const OpenFolder folder = outer.OpenSubfolder(name, Links::kThemselves, error);
        // Listed to the end first: deleting while listing may pass entries over.
        std::vector<EntryName> names;
        if (!error)
            error = folder.Names(names);
        if (error)
            return error;
        for (const EntryName& inner : names) {
            if (work_.IsStopped())
                break;
            DeleteEntry(folder, inner, path + '\\' + TextOf(inner));
        }
        return {};
    }

    TreeWork work_;
};

} // namespace

base::Outcome DeleteTree(const std::string& path, base::WorkObserver& observer) {
    EntryName name;
    base::SystemError error;
    const OpenFolder folder = OpenFolder::Holding(path, name, error);
    if (error) {
        observer.Failed(path, error);
        return base::Outcome::kFailed;
    }
    return TreeDeletion(observer).Run(folder, name, path);
}

} // namespace platform
