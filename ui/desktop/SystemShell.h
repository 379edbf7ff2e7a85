#pragma once

#include "ui/desktop/ClipboardFiles.h"

#include <QIcon>

#include <optional>
#include <string>

class QWidget;

namespace ui {

// The services of the operating system's shell that the rest of this folder builds on: one implementation for
// the free desktops, one for Windows.

enum class ShellWork { kCopy, kDelete, kRename };

/// How work that the operating system's shell was asked to do has ended.
enum class ShellAnswer {
    kNotTaken, ///< it cannot take it, or there is no shell: nothing was touched
    kDone,
    kFailed,  ///< the shell has told the user why
    kStopped, ///< by the user, in a window of the shell
};

/// Has the operating system's shell copy `from` into the folder `to`, delete it, or rename it to `to`. The
/// shell shows its own windows, replaces without a question and reports failures to the user. Meanwhile input
/// to this program's windows is dropped.
ShellAnswer AskShell(ShellWork work, const std::string& from, const std::string& to = {});

/// Starts the program for a document, or for a page at a web address; see DocumentOpener::Open.
int ShellOpen(const std::string& file, const std::string& parameters, const std::string& verb);

/// Has the operating system's file manager show the properties of what is at `path`. Returns false when there
/// is no file manager or it does not respond.
bool ShellShowsProperties(const std::string& path, QWidget* ownerWindow);

/// Asks for a folder in the operating system's own dialog, as FolderPicker::Pick does. Returns nothing when
/// the system has no such dialog.
std::optional<std::string> ShellPickFolder(const std::string& prompt, const std::string& start,
                                           QWidget* parent);

/// The system's clipboard.
ClipboardStore& SystemClipboard();

/// The system's icon for files of an extension (lower case, without its dot); null when it has none.
QIcon ShellIcon(const std::string& extension);

/// The system's description of such files; empty when it has none.
std::string ShellTypeName(const std::string& extension);

} // namespace ui
