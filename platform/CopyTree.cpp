#include "base/FileName.h"
#include "platform/OpenFolder.h"
#include "platform/TreeWork.h"

#include <algorithm>

namespace platform {
namespace {

/// An entry of an open folder, with the path to show for it.
struct Place {
    const OpenFolder& folder;
    const EntryName& name;
    std::string path;
};

std::string PathInside(const std::string& folder, const EntryName& name) {
    return folder + (folder.ends_with('\\') ? "" : "\\") + TextOf(name);
}

/// The folder at one end of a copy, whose medium may be taken away meanwhile.
struct CopyEnd {
    OpenFolder folder;
    std::string path;
};

class TreeCopy {
  public:
    TreeCopy(base::WorkObserver& observer, const CopyEnd& source, const CopyEnd& target)
        : work_(observer), ends_{&source, &target} {}

    base::Outcome Run(const EntryName& name, const std::string& from) {
        CopyEntry({ends_[0]->folder, name, from}, {ends_[1]->folder, name, PathInside(ends_[1]->path, name)});
        return work_.Outcome();
    }

  private:
    bool IsOver() const { return work_.IsStopped() || isHopeless_; }

    bool Proceed(const Place& place, std::uint64_t entries, std::uint64_t bytes) {
        return work_.Proceed(place.path, entries, bytes);
    }

    /// The end whose medium has been taken away, if any. An open folder may outlive its place, and then what
    /// is written there would be lost without an error.
    const CopyEnd* GoneEnd() const {
        const auto* gone =
            std::ranges::find_if(ends_, [](const CopyEnd* end) { return !end->folder.IsInPlace(); });
        return gone == std::end(ends_) ? nullptr : *gone;
    }

    void Fail(const Place& place, base::SystemError error) {
        const CopyEnd* gone = GoneEnd();
        isHopeless_ = isHopeless_ || gone != nullptr || TreeWork::IsHopeless(error);
        if (gone != nullptr)
            work_.Fail(gone->path, {base::kErrorNotReady});
        else
            work_.Fail(place.path, error);
    }

    void CopyEntry(const Place& from, const Place& to) {
        if (!Proceed(from, 0, 0))
            return;
        base::SystemError error;
        std::optional<EntryStatus> status;
        if (GoneEnd() != nullptr)
            error = {base::kErrorNotReady};
        else
            status = from.folder.StatusOf(from.name, Links::kFollowed, error);
        if (error)
            Fail(from, error);
        else if (status->kind == EntryKind::kFolder)
            CopyFolder(from, to, *status);
        else
            CopyFile(from, to, *status);
        if (!IsOver())
            Proceed(from, 1, 0);
    }

    void CopyFile(const Place& from, const Place& to, const EntryStatus& status) {
        base::SystemError error;
        const std::optional<EntryStatus> before = to.folder.StatusOf(to.name, Links::kFollowed, error);
        if (before && before->IsSame(status))
            return;
        if (before && before->kind == EntryKind::kFolder) {
            Fail(to, {base::kErrorAlreadyExists});
            return;
        }
        const OpenedFile source = from.folder.OpenFile(from.name, error);
        if (error) {
            Fail(from, error);
            return;
        }
        NewFile target = to.folder.StartFile(NewFileUse::kCopy, error);
        if (error) {
            Fail(to, error);
            return;
        }
        const CopyResult result =
            target.Fill(source, [&](std::uint64_t bytes) { return Proceed(from, 0, bytes); });
        if (result.wasStopped)
            return;
        error = result.error;
        if (!error)
            error = Complete(source, target, to.name, before.has_value());
        if (error)
            Fail(from, error);
    }

    base::SystemError Complete(const OpenedFile& source, NewFile& target, const EntryName& name,
                               bool replaces) const {
        target.KeepTraits(source, ReadOnlyMark::kKept);
        // Before they take the place of others, the bytes are on the medium.
        if (const base::SystemError error = replaces ? target.Sync() : base::SystemError{})
            return error;
        if (!ends_[1]->folder.IsInPlace())
            return {base::kErrorNotReady};
        // The person has chosen to replace what is there, read-only files too.
        return target.TakeName(name, Replacing::kReadOnlyToo, Durability::kLater);
    }

    void CopyFolder(const Place& from, const Place& to, const EntryStatus& status) {
        const auto isSame = [&](const EntryStatus& other) { return other.IsSame(status); };
        if (std::ranges::any_of(open_, isSame)) {
            Fail(from, {base::kErrorBadPathName});
            return;
        }
        base::SystemError error;
        const std::optional<EntryStatus> before = to.folder.StatusOf(to.name, Links::kFollowed, error);
        if (before && before->IsSame(status))
            return;
        if (before && before->kind != EntryKind::kFolder) {
            Fail(to, {base::kErrorAlreadyExists});
            return;
        }
        const OpenFolder source = from.folder.OpenSubfolder(from.name, Links::kFollowed, error);
        if (error) {
            Fail(from, error);
            return;
        }
        error = before ? base::SystemError{} : to.folder.MakeFolder(to.name);
        OpenFolder target;
        if (!error)
            target = to.folder.OpenSubfolder(to.name, Links::kFollowed, error);
        if (error) {
            Fail(to, error);
            return;
        }
        const std::size_t opened = open_.size();
        open_.push_back(status);
        if (const std::optional<EntryStatus> after = target.Status())
            open_.push_back(*after);
        CopyEntries(source, target, from, to);
        open_.resize(opened);
        if (!before)
            to.folder.KeepTraits(to.name, source);
    }

    void CopyEntries(const OpenFolder& source, const OpenFolder& target, const Place& from, const Place& to) {
        std::vector<EntryName> names;
        if (const base::SystemError error = source.Names(names)) {
            Fail(from, error);
            return;
        }
        for (const EntryName& name : names) {
            if (IsOver())
                return;
            CopyEntry({source, name, PathInside(from.path, name)}, {target, name, PathInside(to.path, name)});
        }
    }

    TreeWork work_;
    const CopyEnd* ends_[2];
    std::vector<EntryStatus> open_; ///< folders that are being copied, and those that they are copied to
    bool isHopeless_ = false;
};

} // namespace

base::Outcome CopyTree(const std::string& from, const std::string& toFolder, base::WorkObserver& observer) {
    EntryName name;
    base::SystemError error;
    CopyEnd source{OpenFolder::Holding(from, name, error), std::string(base::FolderOf(from))};
    if (error) {
        observer.Failed(from, error);
        return base::Outcome::kFailed;
    }
    const CopyEnd target{OpenFolder::At(toFolder, Links::kFollowed, error), toFolder};
    if (error) {
        observer.Failed(toFolder, error);
        return base::Outcome::kFailed;
    }
    return TreeCopy(observer, source, target).Run(name, from);
}

} // namespace platform
