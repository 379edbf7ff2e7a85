#pragma once

#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace ui {

/// What a command sees of the main window: the rows of the file list and the folder that it shows.
class FileListAccess {
  public:
    virtual ~FileListAccess() = default;

    /// Full paths of the selected rows, in the order in which the list shows them.
    virtual std::vector<std::string> SelectedPaths() const = 0;

    /// Lists the folder `path` (with a last backslash) again, under the tree node `key`, and selects that
    /// node.
    virtual void ShowFolder(const std::string& path, const std::string& key) = 0;

    /// ShowFolder with the folder and the node last listed.
    virtual void ShowCurrentFolder() = 0;

    /// Takes every row out of the selection.
    virtual void ClearSelection() = 0;

    /// Adds to the selection the first row whose text or full path equals `name`, without regard to case, and
    /// scrolls to it. False when no row does.
    virtual bool SelectRow(std::string_view name) = 0;

    /// Selects exactly the rows of these full paths, without regard to case, and scrolls to the first. False
    /// when there is none.
    virtual bool SelectPaths(const std::vector<std::string>& paths) = 0;

    /// The window that dialogs stand over.
    virtual QWidget* DialogParent() = 0;
};

} // namespace ui
