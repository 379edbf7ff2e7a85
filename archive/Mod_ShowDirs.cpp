#include "Mod_ShowDirs.h"

namespace archive {

namespace {

constexpr std::uint32_t kTextNoFolder = 542;
constexpr std::uint32_t kTitleNoFolder = 305;
constexpr std::size_t kMostOpen = 32;
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
        messages_->Report(kTextNoFolder, kTitleNoFolder, path);
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
    if (levels_.empty() && !OpenTarget(madeAs))
        return nullptr;
    for (std::string_view rest = target_; !rest.empty(); TakeName(rest))
        TakeName(madeAs);
    path.remove_prefix(target_.size());
    if (OpenInOneStep(path))
        return direct_.get();
    std::size_t depth = 1;
    while (!path.empty()) {
        const std::string_view name = TakeName(path);
        const std::string_view nameWhenMade = TakeName(madeAs);
        if (name == ".")
            continue;
        if (depth == levels_.size() || levels_[depth].name != name)
            if (!Push(depth, name, nameWhenMade))
                return nullptr;
        ++depth;
    }
    return Reopen(depth - 1);
}

/// Opens a folder of which two levels or more are not open, if it exists under exactly this name.
bool OpenFolders::OpenInOneStep(std::string_view path) {
    direct_.reset();
    std::string_view missing = path;
    for (std::size_t depth = 1; depth < levels_.size() && !missing.empty(); ++depth) {
        std::string_view rest = missing;
        if (TakeName(rest) != levels_[depth].name)
            break;
        missing = rest;
    }
    TakeName(missing);
    if (missing.empty())
        return false;
    direct_ = levels_[0].folder->OpenExact(path);
    return direct_ != nullptr;
}

/// Opens the target; when it is missing, the nearest folder above it that exists, and makes the rest.
bool OpenFolders::OpenTarget(std::string_view madeAs) {
    if (!HasDrive(target_))
        return false;
    platform::SystemError error;
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
    levels_.push_back({{}, std::move(folder)});
    return true;
}

/// The folder of a level, opened again when it was closed; deeper levels are given up then.
platform::OutputFolder* OpenFolders::Reopen(std::size_t level) {
    if (levels_[level].folder)
        return levels_[level].folder.get();
    std::size_t from = level;
    while (!levels_[from].folder)
        --from;
    platform::OutputFolder* parent = levels_[from].folder.get();
    std::unique_ptr<platform::OutputFolder> opened;
    while (parent && from != level) {
        const std::string& name = levels_[++from].name;
        platform::SystemError error;
        opened = parent->OpenOrCreate(name, name, error);
        parent = opened.get();
    }
    levels_.resize(level + 1);
    levels_[level].folder = std::move(opened);
    return levels_[level].folder.get();
}

bool OpenFolders::Push(std::size_t level, std::string_view name, std::string_view nameWhenMade) {
    levels_.resize(level);
    platform::OutputFolder* parent = Reopen(level - 1);
    if (!parent)
        return false;
    platform::SystemError error;
    auto folder = parent->OpenOrCreate(name, nameWhenMade, error);
    if (!folder)
        return false;
    levels_.push_back({std::string(name), std::move(folder)});
    if (level > kMostOpen)
        levels_[level - kMostOpen].folder.reset(); // never the target
    return true;
}

} // namespace archive
