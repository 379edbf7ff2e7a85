#pragma once

#include <string>
#include <vector>

class QMimeData;

namespace ui {

/// Interface to the content of the clipboard. The functions below use one implementation at a time: the
/// desktop's clipboard, or one of a test.
class ClipboardStore {
  public:
    virtual ~ClipboardStore() = default;

    /// Takes the data over; false when the clipboard could not be had.
    virtual bool Put(QMimeData* data) = 0;
    /// What is there now; null when it cannot be read. Valid until window messages run.
    virtual const QMimeData* Data() = 0;
};

/// Puts another store in place (null: the desktop's) and returns the one before. The caller keeps ownership.
ClipboardStore* SetClipboardStore(ClipboardStore* store);

/// Puts a list of files on the clipboard, to be copied and never moved; true when it is there.
bool ClipboardCopyFiles(const std::vector<std::string>& paths);

/// The files of the list on the clipboard, this program's or another's; empty when there is none.
std::vector<std::string> ClipboardGetFiles();

/// Whether the clipboard holds a list of files.
bool ClipboardHoldsFiles();

/// The form in which the list travels between copies of this program (DropFiles.h).
inline constexpr char kDropFilesMimeType[] = "application/x-pellarion-drop-files";

} // namespace ui
