#include "archive/cabinet/PackSource.h"

#include "archive/cabinet/CabinetFormat.h"
#include "base/FileName.h"
#include "base/OutputPathRule.h"
#include "platform/OpenFolder.h"

#include <utility>

namespace cabinet {
namespace {

using platform::EntryKind;
using platform::EntryName;
using platform::EntryStatus;
using platform::Links;
using platform::OpenFolder;

/// A file in the file system that is being packed.
class DiskInput final : public PackInput {
  public:
    DiskInput(platform::OpenedFile file, const platform::FileIdentity& identity)
        : file_(std::move(file)), identity_(identity) {}

    base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count) override {
        return file_.Read(buffer, count);
    }

    bool IsUnchanged() const override;

  private:
    platform::OpenedFile file_;
    platform::FileIdentity identity_;
};

class DiskSource final : public PackSource {
  public:
    /// `path` is what stands before all names when they are shown; `single` is the name of the one file, or
    /// empty for the whole folder.
    DiskSource(platform::OpenFolder folder, std::string path, platform::EntryName single)
        : folder_(std::move(folder)), path_(std::move(path)), single_(std::move(single)) {}

    CabReport List(std::vector<PackEntry>& entries, std::size_t most) override;
    std::unique_ptr<PackInput> OpenFile(const PackEntry& entry, CabReport& report) const override;

    std::string PathOf(const std::string& name) const override { return path_ + name; }

  private:
    struct Walk;

    bool WalkFolder(const platform::OpenFolder& folder, const std::string& prefix, Walk& walk) const;
    bool Add(const platform::OpenFolder& folder, const std::string& prefix,
             const platform::EntryName& entryName, Walk& walk,
             std::vector<platform::EntryName>& folders) const;
    bool Fail(Walk& walk, CabFailure failure, const std::string& name, base::SystemError error = {}) const;

    platform::OpenFolder folder_;
    std::string path_;
    platform::EntryName single_;
};

struct DiskSource::Walk {
    std::vector<PackEntry>& entries;
    std::size_t most;
    CabReport report; ///< the first failure
};

bool DiskInput::IsUnchanged() const {
    const std::optional<EntryStatus> now = file_.Status();
    return now && now->identity == identity_;
}

bool DiskSource::Fail(Walk& walk, CabFailure failure, const std::string& name,
                      base::SystemError error) const {
    walk.report = {failure, PathOf(name), error};
    return false;
}

CabReport DiskSource::List(std::vector<PackEntry>& entries, std::size_t most) {
    entries.clear();
    Walk walk{entries, most, {}};
    if (single_.empty()) {
        WalkFolder(folder_, "", walk);
    } else {
        std::vector<EntryName> folders;
        if (Add(folder_, "", single_, walk, folders) && !folders.empty())
            Fail(walk, CabFailure::kCannotRead, platform::TextOf(single_), {base::kErrorAccessDenied});
    }
    return walk.report;
}

/// Files first, then each sub-folder, by name.
bool DiskSource::WalkFolder(const OpenFolder& folder, const std::string& prefix, Walk& walk) const {
    std::vector<EntryName> names;
    if (const base::SystemError error = folder.Names(names))
        return Fail(walk, CabFailure::kCannotRead, prefix, error);
    if (names.empty())
        return Fail(walk, CabFailure::kEmptyFolder, prefix);
    std::vector<EntryName> folders;
    for (const EntryName& name : names) {
        if (!Add(folder, prefix, name, walk, folders))
            return false;
    }
    names = {};
    for (const EntryName& name : folders) {
        const std::string below = prefix + platform::TextOf(name) + "\\";
        base::SystemError error;
        const OpenFolder opened = folder.OpenSubfolder(name, Links::kThemselves, error);
        if (error)
            return Fail(walk, CabFailure::kCannotRead, below, error);
        if (!WalkFolder(opened, below, walk))
            return false;
    }
    return true;
}

bool DiskSource::Add(const OpenFolder& folder, const std::string& prefix, const EntryName& entryName,
                     Walk& walk, std::vector<EntryName>& folders) const {
    std::string name = prefix + platform::TextOf(entryName);
    base::SystemError error;
    const std::optional<EntryStatus> status = folder.StatusOf(entryName, Links::kThemselves, error);
    if (!status)
        return Fail(walk, CabFailure::kCannotRead, name, error);
    // A name is only good when it means the same file again.
    if (platform::EntryNameOf(platform::TextOf(entryName)) != entryName || name.size() > kLongestName ||
        !base::StaysInTarget(name))
        return Fail(walk, CabFailure::kName, name);
    switch (status->kind) {
    case EntryKind::kFolder:
        folders.push_back(entryName);
        return true;
    case EntryKind::kLink:
        return Fail(walk, CabFailure::kLink, name);
    case EntryKind::kOther:
        return Fail(walk, CabFailure::kSpecialFile, name);
    case EntryKind::kFile:
        break;
    }
    if (status->identity.size > kLargestFolder)
        return Fail(walk, CabFailure::kFileTooLarge, name);
    if (walk.entries.size() == walk.most)
        return Fail(walk, CabFailure::kTooManyFiles, "");
    walk.entries.push_back({std::move(name), status->identity, status->attributes, status->executable});
    return true;
}

std::unique_ptr<PackInput> DiskSource::OpenFile(const PackEntry& entry, CabReport& report) const {
    base::SystemError error;
    platform::OpenedFile file = folder_.OpenFileBelow(entry.name, error);
    if (error) {
        report = {CabFailure::kCannotRead, PathOf(entry.name), error};
        return nullptr;
    }
    // Whatever stands in the file's place now, by way of a link or otherwise, is not what was found.
    auto input = std::make_unique<DiskInput>(std::move(file), entry.identity);
    if (!input->IsUnchanged()) {
        report = {CabFailure::kChanged, PathOf(entry.name), {}};
        return nullptr;
    }
    return input;
}

} // namespace

std::unique_ptr<PackSource> PackSource::OfFolder(const std::string& path, CabReport& report) {
    base::SystemError error;
    OpenFolder folder = OpenFolder::At(path, Links::kThemselves, error);
    if (error) {
        const bool isLink = error.code == base::kErrorBadPathName;
        report = {isLink ? CabFailure::kLink : CabFailure::kCannotRead, path, error};
        return nullptr;
    }
    return std::make_unique<DiskSource>(std::move(folder), path, EntryName());
}

std::unique_ptr<PackSource> PackSource::OfSingleFile(const std::string& path, CabReport& report) {
    EntryName name;
    base::SystemError error;
    OpenFolder folder = OpenFolder::Holding(path, name, error);
    if (error) {
        report = {CabFailure::kCannotRead, path, error};
        return nullptr;
    }
    return std::make_unique<DiskSource>(std::move(folder), path.substr(0, path.find_last_of('\\') + 1),
                                        std::move(name));
}

} // namespace cabinet
