#include "ui/archive/OpenedEntries.h"

#include "app/Texts.h"
#include "base/Letters.h"
#include "base/OutputPathRule.h"
#include "platform/FileOperations.h"
#include "platform/Files.h"
#include "platform/FindFiles.h"

#include <functional>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>

namespace ui {
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

std::string ParentOf(const std::string& path) {
    return path.substr(0, path.find_last_of('\\'));
}

constexpr char kFolder[] = "folder";

/// Stamps of files: each tells one state of a file from another. All folders have the same. Each folder is
/// listed once, since asking for file after file in a large one would search it again and again.
class Stamps {
  public:
    /// Empty when there is nothing at `path`.
    std::string Of(const std::string& path) {
        const std::string folder = ParentOf(path);
        auto [listed, isNew] = folders_.try_emplace(folder);
        if (isNew)
            listed->second = List(folder);
        const auto found = listed->second.find(base::ToUpper(path.substr(folder.size() + 1)));
        return found == listed->second.end() ? std::string() : found->second;
    }

  private:
    using Listed = std::unordered_map<std::string, std::string>; // by name in upper case

    static Listed List(const std::string& folder) {
        Listed listed;
        base::SystemError error;
        const auto entries = platform::FindFiles::Start(folder, error);
        platform::FindData entry;
        while (entries && entries->Next(entry))
            listed[base::ToUpper(entry.name)] = entry.attributes & platform::kAttributeDirectory
                                                    ? kFolder
                                                    : std::to_string(entry.lastWrite.ticks) + '/' +
                                                          std::to_string(entry.sizeHigh) + '/' +
                                                          std::to_string(entry.sizeLow);
        return listed;
    }

    std::unordered_map<std::string, Listed> folders_;
};

Journal ReadJournal() {
    Journal journal;
    base::SystemError error;
    const std::string text = platform::ReadWholeFile(JournalPath(), kLongestJournal, error).value_or("");
    for (std::size_t from = 0, end; (end = text.find('\n', from)) != std::string::npos; from = end + 1) {
        const std::string_view line = std::string_view(text).substr(from, end - from);
        const std::size_t space = line.find(' ');
        if (space == line.npos || space < 1)
            continue;
        std::string path(line.substr(space + 1));
        // Nothing outside the folder is ever deleted, whatever became of the journal.
        const std::string folder = OpenFolder::Path();
        if (path.starts_with(folder) && base::StaysInTarget(path.substr(folder.size())))
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

bool IsEmptyFolder(const std::string& path) {
    base::SystemError error;
    const auto entries = platform::FindFiles::Start(path, error);
    platform::FindData entry;
    while (entries && entries->Next(entry))
        if (entry.name != "." && entry.name != "..")
            return false;
    return entries != nullptr;
}

class Quiet : public base::WorkObserver {
    bool Proceed(const base::WorkStep&) override { return true; }
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
    Stamps stamps;
    for (Expected& file : expected_) {
        file.before = stamps.Of(file.path);
        if (const auto known = journal.find(file.path);
            known == journal.end() || known->second.stamp != file.before)
            journal[file.path] = {false, file.before};
    }
    WriteJournal(journal);
}

void OpenFolder::End() {
    Journal journal = ReadJournal();
    Stamps stamps;
    for (const Expected& file : expected_) {
        const std::string stamp = stamps.Of(file.path);
        Note& note = journal[file.path];
        // A file that is unchanged, and that no earlier opening has written, belongs to somebody else.
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
    Stamps stamps;
    // In the order that has a folder after what is in it.
    std::set<std::string, std::greater<>> folders;
    for (auto entry = journal.begin(); entry != journal.end();) {
        const auto& [path, note] = *entry;
        const std::string stamp = stamps.Of(path);
        const bool isOurs = note.isWritten == (stamp == note.stamp);
        for (std::string folder = stamp == kFolder ? path : ParentOf(path);
             folder.size() >= OpenFolder::Path().size(); folder = ParentOf(folder))
            folders.insert(folder);
        const bool stays = !stamp.empty() && stamp != kFolder && isOurs && platform::DeleteFile(path);
        entry = stays ? std::next(entry) : journal.erase(entry);
    }
    Quiet quiet;
    for (const std::string& folder : folders)
        if (IsEmptyFolder(folder))
            platform::DeleteTree(folder, quiet);
    WriteJournal(journal);
}

} // namespace ui
