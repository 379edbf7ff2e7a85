#pragma once

#include "ui/explorer/list/FileRow.h"

#include <QAbstractTableModel>

#include <string>
#include <vector>

namespace ui {

class RowOrder;

/// The file list's rows in all eight columns, the four hidden ones included. Texts are made when they are
/// asked for.
class FileListModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kName, kType, kSize, kModified, kPath, kSortDate, kSortSize, kSortFile, kColumnCount };

    static constexpr int kVisibleColumns = 4;

    /// `kinds` outlives the model.
    explicit FileListModel(FileKinds& kinds, QObject* parent = nullptr);

    /// Replaces the rows by those of `folder` (a path with a last backslash), in the present order. Lets
    /// window messages run while it sorts; when other rows arrive meanwhile, those are shown instead.
    void SetRows(std::string folder, std::vector<FileRow> rows);

    void Clear() { SetRows({}, {}); }

    /// Whether the rows are those of a folder, even if it holds none.
    bool ShowsFolder() const { return !folder_.empty(); }

    /// Gives a row another name, and its place in the order in use.
    void RenameRow(int row, const QString& name);

    void SetHeader(Column column, const QString& text);

    const FileRow& Row(int row) const { return rows_[static_cast<std::size_t>(row)]; }

    /// Full path of a row: what every command takes, never the row's text.
    std::string FullPath(int row) const;
    /// First row whose name or full path equals `name`, without regard to letter case; -1 when none does.
    int FindRow(std::string_view name) const;

    /// The column by whose text a click on the header of `column` sorts.
    static Column SortColumnFor(int column);

    /// Whether every kind exists and the rows stand in the order in use.
    bool IsConsistent() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Sorts as a click on the header of `column` does, and keeps that order for later rows. Rows with equal
    /// keys are ordered by name, as are all rows before the first sort. Lets window messages run meanwhile;
    /// the rows stay where they are until everything is sorted.
    void sort(int column, Qt::SortOrder order) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  signals:
    /// The user has typed another name for the entry at `path`. Nothing has changed yet.
    void RenameWanted(const QString& path, const QString& newName);

  private:
    QString TextOf(const FileRow& row, int column) const;
    RowOrder OrderInUse() const;
    void MoveRowsInOrder();
    void MoveRowsTo(const std::vector<std::uint32_t>& places);

    FileKinds& kinds_;
    std::string folder_;
    std::vector<FileRow> rows_;
    std::vector<QString> headers_;
    Column sortColumn_ = kSortFile;
    Qt::SortOrder direction_ = Qt::AscendingOrder;
    unsigned fillings_ = 0; ///< counts new rows and new orders, so that work that was overtaken is seen to be
    unsigned sortings_ = 0;
};

} // namespace ui
