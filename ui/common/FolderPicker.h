#pragma once

#include <string>

class QWidget;

namespace ui {

/// Interface that asks the user for a folder. BrowseForFolder uses one implementation at a time: the
/// desktop's dialog, or one of the tests, which chooses a folder without a user.
class FolderPicker {
  public:
    virtual ~FolderPicker() = default;

    /// Shows `prompt` over `parent`, with `start` chosen at first when that folder exists. The folder chosen,
    /// or empty when the user cancels.
    virtual std::string Pick(const std::string& prompt, const std::string& start, QWidget* parent) = 0;
};

/// Puts another picker in place (null: the dialog) and returns the one before. The caller keeps ownership.
FolderPicker* SetFolderPicker(FolderPicker* picker);

/// A folder in this program's form of a path ("E:\Out"; a drive's root keeps its backslash), or empty when
/// cancelled. Starts at the last folder picked, else at `start`.
std::string BrowseForFolder(const std::string& prompt, const std::string& start = {},
                            QWidget* parent = nullptr);

} // namespace ui
