#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace ui {

/// The marks as they are at one moment, for looking up many folders in a row.
class MarkSet {
  public:
    /// Whether the folder or drive root `path` is marked, without regard to letter case.
    bool IsMarked(std::string_view path) const;

  private:
    friend class FolderMarks;
    std::unordered_set<std::string> entries_; ///< in upper case
};

/// The mark list `tree.dat`: text, written as UTF-8 and read as ANSI where it is not that, one entry per
/// line, each line ended by CR LF. It is replaced as a whole, so that a drive pulled out leaves the old list
/// or the new one. What cannot be read or written changes nothing, and what would stay the same is not
/// written.
class FolderMarks {
  public:
    /// The list lies in `folder`, a path without a last backslash.
    explicit FolderMarks(std::string_view folder);

    /// The entry of a path in the list. A path of three characters is the root of a drive and is its own
    /// entry. For any other path the drive letter and the colon are left out, so that a mark is still right
    /// when the drive gets another letter.
    static std::string EntryOf(std::string_view path);

    MarkSet Read() const;

    bool IsMarked(std::string_view path) const { return Read().IsMarked(path); }

    /// Adds a line with `entry` when none equals it, without regard to letter case.
    void AddMark(std::string_view entry) const;
    /// Takes out every line that equals `entry`.
    void RemoveMark(std::string_view entry) const;

  private:
    std::string file_;
};

} // namespace ui
