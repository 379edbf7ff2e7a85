#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/PackSource.h"
#include "base/FileName.h"
#include "base/OutputPathRule.h"
#include "platform/windows/Wide.h"
#include "platform/windows/files/Entry.h"
#include "platform/windows/paths/FolderNames.h"
#include "platform/windows/paths/WidePath.h"

namespace cabinet {
namespace {

class HostPackInput final : public PackInput {
  public:
    HostPackInput(platform::Handle file, const platform::FileIdentity& identity)
        : file_(std::move(file)), identity_(identity) {}

    base::SystemError Read(std::span<std::uint8_t> buffer, std::size_t& count) override {
        const base::SystemError error = platform::ReadFullyAt(file_, offset_, buffer, count);
        offset_ += count;
        return error;
    }

    bool IsUnchanged() const override {
        const std::optional<platform::HostEntry> entry = platform::DescribeHandle(file_);
        return entry && entry->identity == identity_;
    }

  private:
    platform::Handle file_;
    platform::FileIdentity identity_;
    std::uint64_t offset_ = 0;
};

class HostPackSource final : public PackSource {
  public:
    /// `single` is the name of the one file, or empty for the whole folder.
    HostPackSource(platform::Handle folder, std::wstring host, std::string path, std::wstring single)
        : folder_(std::move(folder)), host_(std::move(host)), path_(std::move(path)),
          single_(std::move(single)) {}

    CabReport List(std::vector<PackEntry>& entries, std::size_t most) override;
    std::unique_ptr<PackInput> OpenFile(const PackEntry& entry, CabReport& report) const override;

    std::string PathOf(const std::string& name) const override { return path_ + name; }

  private:
    /// What is met on the way: the list, how long it may be, and the first failure.
    struct Walk {
        std::vector<PackEntry>& entries;
        std::size_t most;
        CabReport report;
    };

    bool WalkFolder(const std::wstring& folder, const std::string& prefix, Walk& walk) const;
    bool Add(const std::wstring& folder, const std::string& prefix, const std::wstring& hostName, Walk& walk,
             std::vector<std::wstring>& folders) const;
    bool Fail(Walk& walk, CabFailure failure, const std::string& name, base::SystemError error = {}) const;

    platform::Handle folder_; ///< held open so that nobody puts another in its place
    std::wstring host_;
    std::string path_;
    std::wstring single_;
};

bool HostPackSource::Fail(Walk& walk, CabFailure failure, const std::string& name,
                          base::SystemError error) const {
    walk.report = {failure, PathOf(name), error};
    return false;
}

CabReport HostPackSource::List(std::vector<PackEntry>& entries, std::size_t most) {
    entries.clear();
    Walk walk{entries, most, {}};
    if (single_.empty()) {
        WalkFolder(host_, "", walk);
    } else {
        std::vector<std::wstring> folders;
        if (Add(host_, "", single_, walk, folders) && !folders.empty())
            Fail(walk, CabFailure::kCannotRead, platform::Utf8OfWide(single_), {base::kErrorAccessDenied});
    }
    return walk.report;
}

/// Files first, then each sub-folder, by name.
bool HostPackSource::WalkFolder(const std::wstring& folder, const std::string& prefix, Walk& walk) const {
    std::vector<std::wstring> names;
    if (const base::SystemError error = platform::NamesIn(folder, names))
        return Fail(walk, CabFailure::kCannotRead, prefix, error);
    if (names.empty())
        return Fail(walk, CabFailure::kEmptyFolder, prefix);
    std::vector<std::wstring> folders;
    for (const std::wstring& name : names) {
        if (!Add(folder, prefix, name, walk, folders))
            return false;
    }
    names = {};
    for (const std::wstring& name : folders) {
        if (!WalkFolder(platform::JoinWide(folder, name), prefix + platform::Utf8OfWide(name) + "\\", walk))
            return false;
    }
    return true;
}

bool HostPackSource::Add(const std::wstring& folder, const std::string& prefix, const std::wstring& hostName,
                         Walk& walk, std::vector<std::wstring>& folders) const {
    std::string name = prefix + platform::Utf8OfWide(hostName);
    const std::optional<platform::HostEntry> entry =
        platform::DescribeLink(platform::JoinWide(folder, hostName));
    if (!entry)
        return Fail(walk, CabFailure::kCannotRead, name, platform::LastError());
    // A name is only good when it means the same file again.
    if (platform::WideOf(platform::Utf8OfWide(hostName)) != hostName || name.size() > cabinet::kLongestName ||
        !base::StaysInTarget(name))
        return Fail(walk, CabFailure::kName, name);
    if (entry->IsLink())
        return Fail(walk, CabFailure::kLink, name);
    if (entry->IsFolder()) {
        folders.push_back(hostName);
        return true;
    }
    if (entry->identity.size > cabinet::kLargestFolder)
        return Fail(walk, CabFailure::kFileTooLarge, name);
    if (walk.entries.size() == walk.most)
        return Fail(walk, CabFailure::kTooManyFiles, "");
    walk.entries.push_back({std::move(name), entry->identity, entry->attributes, false});
    return true;
}

std::unique_ptr<PackInput> HostPackSource::OpenFile(const PackEntry& entry, CabReport& report) const {
    base::SystemError error;
    platform::Handle file =
        platform::OpenForReading(platform::JoinWide(host_, platform::WideOf(entry.name)), error);
    if (error) {
        report = {CabFailure::kCannotRead, PathOf(entry.name), error};
        return nullptr;
    }
    // Whatever stands in the file's place now, by way of a link or otherwise, is not what was found.
    auto input = std::make_unique<HostPackInput>(std::move(file), entry.identity);
    if (!input->IsUnchanged()) {
        report = {CabFailure::kChanged, PathOf(entry.name), {}};
        return nullptr;
    }
    return input;
}

std::unique_ptr<PackSource> Open(const std::string& hostFolder, const std::string& path, std::wstring single,
                                 CabReport& report) {
    const std::wstring host = platform::WidePathOf(hostFolder);
    if (host.empty()) {
        report = {CabFailure::kCannotRead, path, {base::kErrorPathNotFound}};
        return nullptr;
    }
    platform::Handle folder(::CreateFileW(
        host.c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    const base::SystemError error = folder.IsOpen() ? base::SystemError{} : platform::LastError();
    const std::optional<platform::HostEntry> entry = platform::DescribeHandle(folder);
    // A file is packed from whatever folder holds it; a link in the place of a folder to be packed is none.
    const bool isLink = entry && entry->IsLink() && single.empty();
    if (error || !entry || !entry->IsFolder() || isLink) {
        report = {isLink ? CabFailure::kLink : CabFailure::kCannotRead, path,
                  error ? error : base::SystemError{base::kErrorFolderInvalid}};
        return nullptr;
    }
    return std::make_unique<HostPackSource>(std::move(folder), host, path, std::move(single));
}

} // namespace

std::unique_ptr<PackSource> PackSource::OpenFolder(const std::string& path, CabReport& report) {
    return Open(path, path, L"", report);
}

std::unique_ptr<PackSource> PackSource::OpenSingleFile(const std::string& path, CabReport& report) {
    const std::size_t separator = path.find_last_of('\\');
    if (separator == std::string::npos || separator + 1 == path.size()) {
        report = {CabFailure::kCannotRead, path, {base::kErrorPathNotFound}};
        return nullptr;
    }
    const std::string folder = path.substr(0, separator + 1);
    return Open(folder, folder, platform::WideOf(base::LastComponent(path)), report);
}

} // namespace cabinet
