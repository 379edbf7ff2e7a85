#include "archive/zip/EntryFile.h"

#include "archive/zip/ArchiveState.h"
#include "base/Letters.h"
#include "base/OutputPathRule.h"
#include "platform/Files.h"

#include <algorithm>
#include <cassert>
#include <optional>

namespace zip {

namespace {

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

const std::string& Separator() {
    std::string& separator = State().PathSeparator;
    if (separator.empty())
        separator = DetectPathSeparator();
    return separator;
}

void UnifySeparators(std::string& path) {
    std::ranges::replace_if(path, IsSeparator, Separator()[0]);
}

std::string_view FolderPart(std::string_view path) {
    return path.substr(0, path.rfind(Separator()) + Separator().size());
}

} // namespace

std::string DetectPathSeparator() {
    return platform::CurrentFolder().find('\\') != std::string::npos ? "\\" : "/";
}

std::string FolderOfPath(std::string& path) {
    UnifySeparators(path);
    std::string folder;
    if (path.find(Separator()) != path.npos)
        folder = FolderPart(path);
    else
        folder = platform::CurrentFolder();
    if (!folder.ends_with(Separator()))
        folder += Separator();
    return base::ToUpper(folder);
}

platform::SystemTime DosDateTimeToDate(std::uint16_t date, std::uint16_t time) {
    platform::FileTime fileTime;
    platform::DosDateTimeToFileTime(date, time, fileTime);
    return platform::FileTimeToSystemTime(fileTime);
}

bool SetEntryTimesFromDos(platform::FileTimes& times, std::uint16_t date, std::uint16_t time) {
    platform::FileTime local;
    if (!platform::DosDateTimeToFileTime(date, time, local))
        return false;
    const platform::FileTime utc = platform::LocalFileTimeToFileTime(local);
    times = {.creation = utc, .lastAccess = platform::CurrentFileTime(), .lastWrite = utc};
    return true;
}

std::optional<platform::FileTimes> EntryTimes(std::uint16_t date, std::uint16_t time) {
    platform::FileTimes times;
    if ((date == 0 && time == 0) || !SetEntryTimesFromDos(times, date, time))
        return std::nullopt;
    return times;
}

std::string JoinEntryPath(std::string& folder, std::string_view name) {
    if (folder.empty() || !IsSeparator(folder.back()))
        folder += Separator();
    std::string path;
    path.reserve(folder.size() + name.size() + 1);
    path += folder;
    path += name;
    UnifySeparators(path);
    return path;
}

bool CreateEntryFolder(output::OpenFolders& folders, std::string_view name, std::string& folder) {
    assert(base::StaysInTarget(name));
    std::string path = JoinEntryPath(folder, name);
    if (!path.ends_with(Separator()))
        path += Separator();
    return folders.Last(path) || folders.CreateFolderPath(path, path);
}

int WriteEntryFile(output::OpenFolders& folders, std::string_view name, std::string& folder,
                   std::span<const std::uint8_t> data, std::uint16_t date, std::uint16_t time) {
    constexpr int kFailed = 1;
    assert(base::StaysInTarget(name));
    std::string full = JoinEntryPath(folder, name);
    const std::string_view folderPart = FolderPart(full);
    platform::OutputFolder* output = folders.Last(folderPart);
    if (!output)
        output = folders.CreateFolderPath(folderPart, FolderOfPath(full));
    const std::string_view fileName = std::string_view(full).substr(folderPart.size());
    if (!output || fileName.empty())
        return kFailed;
    return output->WriteFile(fileName, data, EntryTimes(date, time)) ? kFailed : 0;
}

std::unique_ptr<platform::OutputFile> BeginEntryFile(output::OpenFolders& folders, std::string_view name,
                                                     std::string& folder) {
    assert(base::StaysInTarget(name));
    std::string full = JoinEntryPath(folder, name);
    const std::string_view folderPart = FolderPart(full);
    platform::OutputFolder* output = folders.Last(folderPart);
    if (!output)
        output = folders.Open(folderPart, FolderOfPath(full));
    base::SystemError error;
    return output ? output->CreateFile(std::string_view(full).substr(folderPart.size()), error) : nullptr;
}

} // namespace zip
