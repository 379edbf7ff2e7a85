#pragma once

#include <QDialog>

#include <string>

class QLineEdit;
class QTreeView;

namespace ui {

class FolderTree;

/// Picks a folder from the tree of all drives, or by its path, and can make a new one. It shows the paths
/// that the rest of the program shows, on every system.
class FolderPickerDialog : public QDialog {
    Q_OBJECT

  public:
    FolderPickerDialog(const std::string& prompt, const std::string& start, QWidget* parent);

    /// The folder, once accepted: no last backslash but for the root of a drive.
    std::string Folder() const { return folder_; }

    /// Takes the folder that stands in the path line; stays open, and says so, when there is no such folder.
    void accept() override;

  private:
    void Build(const std::string& prompt);
    void Show(const std::string& path);
    void MakeFolder();

    FolderTree* folders_;
    QLineEdit* path_;
    QTreeView* tree_;
    std::string folder_;
};

} // namespace ui
