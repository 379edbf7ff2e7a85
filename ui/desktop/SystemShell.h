#pragma once

#include "ui/desktop/ClipboardFiles.h"

#include <QIcon>

#include <optional>
#include <string>

class QWidget;

namespace ui {

// What the system's own shell does behind the services of this folder: one implementation for the free
// desktops, one for Windows.

enum class ShellWork { kCopy, kDelete, kRename };

/// What became of work that the system's shell was asked to do.
enum class ShellAnswer {
    kNotTaken, ///< it cannot take it, or there is no shell: nothing was touched
    kDone,
    kFailed,  ///< the shell has told the user why
    kStopped, ///< by the user, in a window of the shell
};

/// Has the system's shell copy `from` into the folder `to`, delete it, or rename it to `to`. It shows its own
/// windows, replaces without a question, and tells of what failed; input to this program's windows is dropped
/// meanwhile.
ShellAnswer AskShell(ShellWork work, const std::string& from, const std::string& to = {});

/// Starts the program for a document, or for a page at a web address; see DocumentOpener::Open.
int ShellOpen(const std::string& file, const std::string& parameters, const std::string& verb);

/// Has the system's file manager show the properties of what is at `path`. False when there is none, or it
/// does not answer.
bool ShellShowsProperties(const std::string& path, QWidget* ownerWindow);

/// Asks for a folder in the system's own window, as FolderPicker::Pick does; nothing when the system has
/// none.
std::optional<std::string> ShellPickFolder(const std::string& prompt, const std::string& start,
                                           QWidget* parent);

/// The system's clipboard.
ClipboardStore& SystemClipboard();

/// The system's icon for files of an extension (lower case, without its dot); null when it has none.
QIcon ShellIcon(const std::string& extension);

/// The system's description of such files; empty when it has none.
std::string ShellTypeName(const std::string& extension);

} // namespace ui
