#pragma once

#include <QScopedValueRollback>

#include <string>

namespace ui {

class FileListAccess;
class FileListModel;
class FolderTreeModel;
class ListView;
class Navigator;
class TreeView;

/// What the commands of the main window work on. It belongs to the window; one command runs at a time.
struct CommandTargets {
    FileListAccess& window;
    Navigator& navigator;
    FolderTreeModel& nodes;
    TreeView& tree;
    FileListModel& files;
    ListView& list;
    bool isRunning = false;
    /// The user closes the window: the command that runs ends as soon as it can, and lists the folder, after
    /// which the window closes.
    bool isStopWanted = false;
};

/// One run of a command. A command lets messages run, so that another, or itself, may be wanted meanwhile:
/// only the first may go on.
class CommandRun {
  public:
    explicit CommandRun(CommandTargets& targets);

    /// Whether this command may run.
    bool IsFirst() const { return isFirst_; }

  private:
    bool isFirst_;
    QScopedValueRollback<bool> running_;
};

/// The folder that paste and new folder work in, with a last backslash: that of the selected tree node, or
/// the user's desktop when that is the tree's root.
std::string CurrentFolderPath(const CommandTargets& targets);

} // namespace ui
