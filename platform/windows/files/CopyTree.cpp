#include "platform/Files.h"
#include "platform/TreeWork.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/files/TemporaryFile.h"
#include "platform/windows/paths/FolderNames.h"
#include "platform/windows/paths/WidePath.h"

#include <algorithm>

namespace platform {
namespace {

/// One place, as the system and as this program write it.
struct Place {
    std::wstring host;
    std::string path;

    Place Inside(const std::wstring& name) const {
        return {JoinWide(host, name), path + (path.ends_with('\\') ? "" : "\\") + Utf8OfWide(name)};
    }
};

class TreeCopy {
  public:
    explicit TreeCopy(FileOperationObserver& observer) : work_(observer) {}

    FileOutcome Run(const Place& from, const Place& to) {
        CopyEntry(from, to);
        return work_.Outcome();
    }

  private:
    bool IsOver() const { return work_.IsStopped() || isHopeless_; }

    bool Proceed(const Place& place, std::uint64_t entries, std::uint64_t bytes) {
        return work_.Proceed(place.path, entries, bytes);
    }

    void Fail(const Place& place, base::SystemError error) {
        isHopeless_ = isHopeless_ || TreeWork::IsHopeless(error);
        work_.Fail(place.path, error);
    }

    void CopyEntry(const Place& from, const Place& to) {
        if (!Proceed(from, 0, 0))
            return;
        const std::optional<HostEntry> entry = DescribeTarget(from.host);
        if (!entry)
            Fail(from, LastError());
        else if (entry->IsFolder())
            CopyFolder(from, to, *entry);
        else
            CopyFile(from, to, *entry);
        if (!IsOver())
            Proceed(from, 1, 0);
    }

    void CopyFile(const Place& from, const Place& to, const HostEntry& entry) {
        const std::optional<HostEntry> before = DescribeTarget(to.host);
        if (before && before->IsSameFile(entry))
            return;
        if (before && before->IsFolder()) {
            Fail(to, {base::kErrorAlreadyExists});
            return;
        }
        base::SystemError error;
        const Handle source = OpenForReading(from.host, error);
        if (error) {
            Fail(from, error);
            return;
        }
        TemporaryFile target = TemporaryFile::StartIn(to.host.substr(0, to.host.find_last_of(L'\\') + 1));
        if (target.Error()) {
            Fail(to, target.Error());
            return;
        }
        const CopyResult result =
            CopyContent(source, target.File(), [&](std::uint64_t bytes) { return Proceed(from, 0, bytes); });
        if (result.wasStopped)
            return;
        error = result.error;
        if (!error) {
            KeepTimes(source, target.File());
            // A read-only file is replaced as well: the person has chosen to.
            if (before && IsProtected(before->attributes))
                ::SetFileAttributesW(to.host.c_str(), FILE_ATTRIBUTE_NORMAL);
            error = target.Commit(to.host, before ? Durability::kOnMedium : Durability::kLater);
        }
        if (error)
            Fail(from, error);
        else
            ::SetFileAttributesW(to.host.c_str(), entry.attributes & kKeptAttributes);
    }

    void CopyFolder(const Place& from, const Place& to, const HostEntry& entry) {
        const auto isSame = [&](const HostEntry& other) { return other.IsSameFile(entry); };
        if (std::ranges::any_of(open_, isSame)) {
            Fail(from, {base::kErrorBadPathName});
            return;
        }
        const std::optional<HostEntry> before = DescribeTarget(to.host);
        if (before && before->IsSameFile(entry))
            return;
        if (before && !before->IsFolder()) {
            Fail(to, {base::kErrorAlreadyExists});
            return;
        }
        if (!before && ::CreateDirectoryW(to.host.c_str(), nullptr) == 0) {
            Fail(to, LastError());
            return;
        }
        const std::size_t opened = open_.size();
        open_.push_back(entry);
        if (const std::optional<HostEntry> after = DescribeTarget(to.host))
            open_.push_back(*after);
        CopyEntries(from, to);
        open_.resize(opened);
        if (!before)
            KeepFolderTraits(from, to, entry);
    }

    void CopyEntries(const Place& from, const Place& to) {
        std::vector<std::wstring> names;
        if (const base::SystemError error = NamesIn(from.host, names)) {
            Fail(from, error);
            return;
        }
        for (const std::wstring& name : names) {
            if (IsOver())
                return;
            CopyEntry(from.Inside(name), to.Inside(name));
        }
    }

    /// Media that keep neither times nor attributes are no failure.
    static void KeepFolderTraits(const Place& from, const Place& to, const HostEntry& entry) {
        const Handle source = OpenToAsk(from.host);
        const Handle target(::CreateFileW(to.host.c_str(), FILE_WRITE_ATTRIBUTES, kShareAll, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (source.IsOpen() && target.IsOpen())
            KeepTimes(source, target);
        ::SetFileAttributesW(to.host.c_str(), entry.attributes & kKeptAttributes);
    }

    static constexpr std::uint32_t kKeptAttributes =
        kAttributeReadOnly | kAttributeHidden | kAttributeSystem | kAttributeArchive;

    TreeWork work_;
    std::vector<HostEntry> open_; ///< folders that are being copied, and those that they are copied to
    bool isHopeless_ = false;
};

} // namespace

FileOutcome CopyTree(const std::string& from, const std::string& toFolder, FileOperationObserver& observer) {
    const Place source{WidePathOf(from), from};
    const Place folder{WidePathOf(toFolder), toFolder};
    if (source.host.empty() || source.host.ends_with(L'\\') || folder.host.empty()) {
        observer.Failed(source.host.empty() ? from : toFolder, {base::kErrorPathNotFound});
        return FileOutcome::kFailed;
    }
    const std::wstring name = source.host.substr(source.host.find_last_of(L'\\') + 1);
    return TreeCopy(observer).Run(source, folder.Inside(name));
}

} // namespace platform
