#include "dialogs/OpenFolder.h"

#include "app/core/Texts.h"
#include "platform/FileOperations.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"
#include "platform/OutputPathRule.h"

#include <functional>
#include <map>
#include <set>
#include <string_view>

namespace dialogs {
namespace {

constexpr std::uint64_t kLongestJournal = 256u << 20;

/// What the journal says of a file: one line "<+ or -> <stamp> <path>" each.
struct Note {
    bool isWritten =
        false; ///< the stamp is the file's own; else it is the one of before, and writing has begun
    std::string stamp;
};

using Journal = std::map<std::string, Note>;

std::string JournalPath() {
    return std::string(app::kWorkFolder) + "opened.lst";
}

/// Tells one state of a file from another; the same for all folders; empty when there is nothing.
std::string StampOf(const std::string& path) {
    const auto found = platform::FindEntry(path);
    if (!found)
        return {};
    if (found->attributes & platform::kAttributeDirectory)
        return "folder";
    return std::to_string(found->lastWrite.ticks) + '/' + std::to_string(found->sizeHigh) + '/' +
           std::to_string(found->sizeLow);
}

Journal ReadJournal() {
    Journal journal;
    platform::SystemError error;
    const std::string text = platform::ReadWholeFile(JournalPath(), kLongestJournal, error).value_or("");
    for (std::size_t from = 0, end; (end = text.find('\n', from)) != std::string::npos; from = end + 1) {
        const std::string_view line = std::string_view(text).substr(from, end - from);
        const std::size_t space = line.find(' ');
        if (space == line.npos || space < 1)
            continue;
        std::string path(line.substr(space + 1));
        // Nothing outside the folder is ever deleted, whatever became of the journal.
        const std::string folder = OpenFolder::Path();
        if (path.starts_with(folder) && platform::StaysInTarget(path.substr(folder.size())))
            journal[std::move(path)] = {line[0] == '+', std::string(line.substr(1, space - 1))};
    }
    return journal;
}

void WriteJournal(const Journal& journal) {
    if (journal.empty()) {
        platform::DeleteFile(JournalPath());
        return;
    }
    std::string text;
    for (const auto& [path, note] : journal)
        text += (note.isWritten ? '+' : '-') + note.stamp + ' ' + path + '\n';
    platform::WriteWholeFile(JournalPath(), text);
}

std::string ParentOf(const std::string& path) {
    return path.substr(0, path.find_last_of('\\'));
}

bool IsEmptyFolder(const std::string& path) {
    platform::SystemError error;
    const auto entries = platform::FindFiles::Start(path, error);
    platform::FindData entry;
    while (entries && entries->Next(entry))
        if (entry.name != "." && entry.name != "..")
            return false;
    return entries != nullptr;
}

class Quiet : public platform::FileOperationObserver {
    bool Proceed(const platform::FileStep&) override { return true; }

    void Failed(const std::string&, platform::SystemError) override {}
};

} // namespace

OpenFolder::OpenFolder() {
    for (const std::string& folder : {std::string(app::kWorkFolder), Path()})
        if (!platform::FolderExists(folder))
            platform::CreateFolder(folder);
}

std::string OpenFolder::Path() {
    return std::string(app::kWorkFolder) + "Temp\\";
}

void OpenFolder::Expect(const std::string& path) {
    if (!path.empty())
        expected_.push_back({path.ends_with('\\') ? path.substr(0, path.size() - 1) : path, {}});
}

void OpenFolder::Begin() {
    Journal journal = ReadJournal();
    for (Expected& file : expected_) {
        file.before = StampOf(file.path);
        if (const auto known = journal.find(file.path);
            known == journal.end() || known->second.stamp != file.before)
            journal[file.path] = {false, file.before};
    }
    WriteJournal(journal);
}

void OpenFolder::End() {
    Journal journal = ReadJournal();
    for (const Expected& file : expected_) {
        const std::string stamp = StampOf(file.path);
        Note& note = journal[file.path];
        // What is as it was before, and not known as written earlier, is somebody else's.
        if (stamp.empty() || (stamp == file.before && !note.isWritten))
            journal.erase(file.path);
        else
            note = {true, stamp};
    }
    WriteJournal(journal);
}

void EmptyOpenFolder() {
    Journal journal = ReadJournal();
    if (journal.empty())
        return;
    // The longest first: a folder after what is in it.
    std::set<std::string, std::greater<>> folders;
    for (auto entry = journal.begin(); entry != journal.end();) {
        const auto& [path, note] = *entry;
        const std::string stamp = StampOf(path);
        const bool isOurs = note.isWritten == (stamp == note.stamp);
        for (std::string folder = stamp == "folder" ? path : ParentOf(path);
             folder.size() >= OpenFolder::Path().size(); folder = ParentOf(folder))
            folders.insert(folder);
        const bool stays = !stamp.empty() && stamp != "folder" && isOurs && platform::DeleteFile(path);
        entry = stays ? std::next(entry) : journal.erase(entry);
    }
    Quiet quiet;
    for (const std::string& folder : folders)
        if (IsEmptyFolder(folder))
            platform::DeleteTree(folder, quiet);
    WriteJournal(journal);
}

} // namespace dialogs
