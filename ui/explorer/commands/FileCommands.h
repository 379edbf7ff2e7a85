#pragma once

#include "ui/explorer/commands/CommandTargets.h"

#include <string>
#include <vector>

namespace ui {

/// The commands on the rows of the file list, and the new folder, which both menus have. A command that comes
/// while another runs, or without a selected row that it needs, does nothing.
class FileCommands {
  public:
    /// `targets` outlives the commands.
    explicit FileCommands(CommandTargets& targets) : on_(targets) {}

    void Copy();
    void Paste();
    /// The menu's and the toolbar's deletion.
    void Delete();
    /// The Delete key's: the focus stays in the list, and folders keep their tree nodes until they are
    /// clicked.
    void DeleteByKey();
    /// Starts editing the selected row's name.
    void StartRename();
    /// The end of that: `path` gets the name `newName`.
    void Rename(const std::string& path, const std::string& newName);
    void NewFolder();
    void Properties();

  private:
    void PasteFiles(const std::vector<std::string>& paths, const std::string& folder);
    void ShowAfterPaste();
    void ShowParentOf(const std::string& path);
    void RenameNode(const std::string& path, const std::string& newPath);

    CommandTargets& on_;
};

} // namespace ui
