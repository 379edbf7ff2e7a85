#include "platform/Files.h"

#include "platform/OpenFolder.h"

namespace platform {
namespace {

std::span<const std::uint8_t> BytesOf(std::span<const char> content) {
    return {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()};
}

/// Where a file is to be put.
struct Target {
    OpenFolder folder;
    EntryName name;
};

/// Opens the folder of the file that `path` leads to. A folder or a read-only file there is refused.
Target OpenTarget(const std::string& path, base::SystemError& error) {
    const std::optional<std::uint32_t> attributes = GetFileAttributes(path);
    Target target;
    if (attributes && (*attributes & (kAttributeDirectory | kAttributeReadOnly)) != 0)
        error = {base::kErrorAccessDenied};
    else
        target.folder = OpenFolder::HoldingTarget(path, target.name, error);
    return target;
}

} // namespace

bool FileExists(const std::string& path) {
    const std::optional<std::uint32_t> attributes = GetFileAttributes(path);
    return attributes && (*attributes & kAttributeDirectory) == 0;
}

bool FolderExists(const std::string& path) {
    const std::optional<std::uint32_t> attributes = GetFileAttributes(path);
    return attributes && (*attributes & kAttributeDirectory) != 0;
}

base::SystemError CopyFile(const std::string& from, const std::string& to) {
    base::SystemError error;
    EntryName name;
    const OpenFolder folder = OpenFolder::Holding(from, name, error);
    if (error)
        return error;
    const OpenedFile source = folder.OpenFile(name, error);
    if (error)
        return error;
    const Target target = OpenTarget(to, error);
    if (error)
        return error;
    base::SystemError ignored;
    const std::optional<EntryStatus> here = source.Status();
    const std::optional<EntryStatus> there = target.folder.StatusOf(target.name, Links::kFollowed, ignored);
    if (here && there && here->IsSame(*there))
        return {base::kErrorSharingViolation};
    NewFile copy = target.folder.StartFile(NewFileUse::kOutput, error);
    if (error)
        return error;
    copy.KeepOwnership(target.name);
    if ((error = copy.Fill(source, [](std::uint64_t) { return true; }).error))
        return error;
    // A copy from a write-protected medium must not be protected itself.
    copy.KeepTraits(source, ReadOnlyMark::kDropped);
    // What takes no other file's place can be copied again: it need not wait for the medium.
    return copy.TakeName(target.name, Replacing::kWritable,
                         there ? Durability::kOnMedium : Durability::kLater);
}

base::SystemError WriteWholeFile(const std::string& path, std::span<const char> content) {
    base::SystemError error;
    const Target target = OpenTarget(path, error);
    if (error)
        return error;
    NewFile file = target.folder.StartFile(NewFileUse::kOutput, error);
    if (error)
        return error;
    file.KeepOwnership(target.name);
    if ((error = file.Write(BytesOf(content))))
        return error;
    return file.TakeName(target.name, Replacing::kWritable, Durability::kOnMedium);
}

base::SystemError CreateNewFile(const std::string& path, std::span<const char> content) {
    base::SystemError error;
    EntryName name;
    const OpenFolder folder = OpenFolder::Holding(path, name, error);
    if (error)
        return error;
    NewFile file = folder.CreateFile(name, error);
    if (error || (error = file.Write(BytesOf(content))))
        return error;
    return file.Keep(Durability::kOnMedium);
}

} // namespace platform
