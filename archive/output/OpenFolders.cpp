#include "archive/output/OpenFolders.h"

#include "app/TextIds.h"
#include "base/Letters.h"

#include <iterator>

namespace output {

namespace {

constexpr std::string_view kSeparators = "\\/";
constexpr std::size_t kRootLength = 3; // of "C:\"

/// Takes the first name off `path`, with the separator behind it.
std::string_view TakeName(std::string_view& path) {
    const std::size_t end = path.find_first_of(kSeparators);
    const std::string_view name = path.substr(0, end);
    path.remove_prefix(end == path.npos ? path.size() : end + 1);
    return name;
}

bool HasDrive(std::string_view path) {
    return path.size() >= kRootLength && path[1] == ':' && kSeparators.find(path[2]) != kSeparators.npos &&
           ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
}

} // namespace

platform::OutputFolder* OpenFolders::CreateFolderPath(std::string_view path, std::string_view madeAs) {
    platform::OutputFolder* folder = Open(path, madeAs);
    if (!folder && messages_)
        messages_->Report(IDS_FOLDER_NOT_MADE, IDS_FOLDER_NOT_MADE_TITLE, path);
    return folder;
}

platform::OutputFolder* OpenFolders::Open(std::string_view path, std::string_view madeAs) {
    lastPath_.clear();
    last_ = Walk(path, madeAs);
    if (last_)
        lastPath_ = path;
    return last_;
}

platform::OutputFolder* OpenFolders::Walk(std::string_view path, std::string_view madeAs) {
    if (!base_ && !OpenTarget(madeAs))
        return nullptr;
    for (std::string_view rest = target_; !rest.empty(); TakeName(rest))
        TakeName(madeAs);
    path.remove_prefix(target_.size());
    // Mostly the path is its own key but for the letter case.
    if (const auto found = byKey_.find(base::ToUpper(path));
        found != byKey_.end() && found->second->path == path)
        return Use(found->second);
    SplitPath(path, madeAs);

    std::size_t depth = steps_.size();
    platform::OutputFolder* folder = nullptr;
    while (depth > 0 && !(folder = FindKept(steps_[depth - 1])))
        --depth;
    if (!folder)
        folder = base_.get();
    if (steps_.size() - depth >= 2) {
        const std::string_view rest = path.substr(depth == 0 ? 0 : steps_[depth - 1].path.size());
        if (auto direct = folder->OpenExact(rest))
            return Keep(steps_.back(), std::move(direct));
    }
    for (; folder && depth < steps_.size(); ++depth) {
        base::SystemError error;
        auto below = folder->OpenOrCreate(steps_[depth].name, steps_[depth].nameWhenMade, error);
        folder = below ? Keep(steps_[depth], std::move(below)) : nullptr;
    }
    return folder;
}

/// `path` and `madeAs` start at the target.
void OpenFolders::SplitPath(std::string_view path, std::string_view madeAs) {
    steps_.clear();
    key_.clear();
    for (std::string_view rest = path; !rest.empty();) {
        Step step{TakeName(rest), TakeName(madeAs), path.substr(0, path.size() - rest.size()), 0};
        if (step.name == ".")
            continue;
        key_ += base::ToUpper(step.name) + '\\';
        step.keyEnd = key_.size();
        steps_.push_back(step);
    }
}

/// Closes a folder that is open under another letter case. On some systems that is another folder; on others,
/// two open objects for one folder would not know what was made through the other.
platform::OutputFolder* OpenFolders::FindKept(const Step& step) {
    const auto found = byKey_.find(std::string_view(key_).substr(0, step.keyEnd));
    if (found == byKey_.end())
        return nullptr;
    const auto kept = found->second;
    if (kept->path != step.path) {
        Drop(kept);
        return nullptr;
    }
    return Use(kept);
}

platform::OutputFolder* OpenFolders::Use(KeptList::iterator kept) {
    kept_.splice(kept_.begin(), kept_, kept);
    return kept->folder.get();
}

platform::OutputFolder* OpenFolders::Keep(const Step& step, std::unique_ptr<platform::OutputFolder> folder) {
    if (kept_.size() == mostOpen_)
        Drop(std::prev(kept_.end())); // never the one above this, which was used just now
    kept_.push_front({key_.substr(0, step.keyEnd), std::string(step.path), std::move(folder)});
    byKey_.emplace(kept_.front().key, kept_.begin());
    return kept_.front().folder.get();
}

void OpenFolders::Drop(KeptList::iterator kept) {
    byKey_.erase(kept->key);
    kept_.erase(kept);
}

/// Opens the target; when it is missing, the nearest folder above it that exists, and makes the rest.
bool OpenFolders::OpenTarget(std::string_view madeAs) {
    if (!HasDrive(target_))
        return false;
    base::SystemError error;
    std::size_t end = target_.size();
    auto folder = platform::OutputFolder::Open(target_, error);
    while (!folder && end > kRootLength) {
        end = target_.find_last_of(kSeparators, end - 2) + 1;
        folder = platform::OutputFolder::Open(target_.substr(0, end), error);
    }
    std::string_view rest = target_;
    while (rest.size() > target_.size() - end) {
        TakeName(rest);
        TakeName(madeAs);
    }
    while (folder && !rest.empty()) {
        const std::string_view name = TakeName(rest);
        folder = folder->OpenOrCreate(name, TakeName(madeAs), error);
    }
    if (!folder)
        return false;
    base_ = std::move(folder);
    return true;
}

} // namespace output
