#pragma once

#include "ui/explorer/commands/CommandTargets.h"

#include <QModelIndex>

namespace ui {

/// The commands on the selected node of the folder tree. Drives, the root and the operating system's special
/// places are neither deleted nor renamed; the user is told so.
class FolderCommands {
  public:
    /// `targets` outlives the commands.
    explicit FolderCommands(CommandTargets& targets) : on_(targets) {}

    /// The menu's and the toolbar's deletion: shows the current folder again in every case.
    void Delete();
    /// The Delete key's: a folder that cannot be deleted keeps its node.
    void DeleteByKey();
    /// Starts editing the node's caption.
    void StartRename();
    /// The end of that: the folder `key` gets the name `newName`.
    void Rename(const std::string& key, const std::string& newName);
    void Properties();

  private:
    bool MayChange(const QModelIndex& node, std::uint32_t verbText) const;
    bool IsDeletionWanted() const;
    bool DeleteFolder(const std::string& key);
    void ShowAfterDeletion(const std::string& key, bool isGone);

    CommandTargets& on_;
};

} // namespace ui
