#pragma once

#include "ui/explorer/commands/CommandTargets.h"
#include "ui/explorer/commands/CompressCommand.h"
#include "ui/explorer/commands/FileCommands.h"
#include "ui/explorer/commands/FolderCommands.h"
#include "ui/explorer/commands/HelpCommands.h"

#include <QObject>

namespace ui {

class Commands;

/// The commands on files, folders and help, tied to the actions, keys and edited names that start them.
class CommandSet : public QObject {
    Q_OBJECT

  public:
    /// `actions` and what `targets` names outlive it; `parent` is the main window.
    CommandSet(const CommandTargets& targets, Commands& actions, QWidget* parent);

    /// Enables the paste entry when the clipboard holds files, and else disables it.
    void UpdatePaste();

    bool IsRunning() const { return targets_.isRunning; }

    /// Ends the command that runs as soon as it can.
    void Stop() { targets_.isStopWanted = targets_.isRunning; }

  private:
    void ConnectFileCommands();
    void ConnectFolderCommands();
    void ConnectHelpCommands();
    void UpdateForSelection();

    CommandTargets targets_;
    Commands& actions_;
    FileCommands files_;
    FolderCommands folders_;
    CompressCommand compress_;
    HelpCommands help_;
};

} // namespace ui
