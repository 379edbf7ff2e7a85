#pragma once

#include <QStandardItemModel>

#include <string>

namespace ui {

/// The folders that can be picked: the user's desktop and documents, then every drive with its folders. A
/// folder is read when it is first unfolded. Hidden folders are left out.
class FolderTree : public QStandardItemModel {
    Q_OBJECT

  public:
    explicit FolderTree(QObject* parent = nullptr);

    /// Path of the folder at `index`, in this program's form.
    std::string PathOf(const QModelIndex& index) const;

    /// Reads the folder at `index` unless that has been done.
    void Read(const QModelIndex& index);

    /// Reads the folder at `index` again, for one that has got a new folder.
    void ReadAgain(const QModelIndex& index);

    /// Index of a folder on a drive, reading what lies above it; the deepest folder that is there when it is
    /// not.
    QModelIndex Find(const std::string& path);

  private:
    QStandardItem* Add(QStandardItem* parent, const QString& name, const std::string& path);
};

} // namespace ui
