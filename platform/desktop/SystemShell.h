#pragma once

#include "platform/desktop/ClipboardFiles.h"

#include <QIcon>

#include <optional>
#include <string>

class QWidget;

namespace platform {

// What the system's own shell does behind the services of this folder: one implementation for the free
// desktops, one for Windows.

enum class ShellWork { kCopy, kDelete, kRename };

/// Has the system's shell copy `from` into the folder `to`, delete it, or rename it to `to`. It shows its own
/// windows, replaces without a question, and tells of what failed; input to this program's windows is dropped
/// meanwhile. A user who stops it there stops the FileWork that is going on. Whether it was done; nothing
/// when the shell cannot take it, or there is none: then nothing was touched, and the program's own engine
/// has it.
std::optional<bool> AskShell(ShellWork work, const std::string& from, const std::string& to = {});

/// Starts the program for a document, or for a page at a web address; see DocumentOpener::Open.
int ShellOpen(const std::string& file, const std::string& parameters, const std::string& verb);

/// Has the system's file manager show the properties of what is at `path`. False when there is none, or it
/// does not answer.
bool ShellShowsProperties(const std::string& path, QWidget* ownerWindow);

/// Asks for a folder; see FolderPicker::Pick.
std::string ShellPickFolder(const std::string& prompt, const std::string& start, QWidget* parent);

/// The system's clipboard.
ClipboardStore& SystemClipboard();

/// The system's icon for files of an extension (lower case, without its dot); null when it has none.
QIcon ShellIcon(const std::string& extension);

/// The system's description of such files; empty when it has none.
std::string ShellTypeName(const std::string& extension);

} // namespace platform
