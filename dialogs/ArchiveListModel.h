#pragma once

#include "platform/Times.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <string>
#include <vector>

namespace dialogs {

/// Columns of the archive lists. The ones from SortDate on are hidden and serve sorting and bookkeeping.
enum class ArchiveColumn { Name, Modified, Size, Path, SortDate, SortSize, Archive, SortFile };
inline constexpr int kArchiveColumns = 8;
inline constexpr int kVisibleArchiveColumns = 4;

/// One entry as it stands in a list.
struct ArchiveRow {
    std::int32_t entry = 0; ///< its number in its archive, from 1
    std::string archive;    ///< full path of the archive
    std::string prefix;     ///< shown before the name
    std::string name;       ///< as stored
    std::string path;       ///< folder inside the archive, where the format keeps one apart
    platform::SystemTime modified;
    std::uint64_t size = 0; ///< bytes when unpacked
    QString sizeText;       ///< shown instead of the size unless empty
    bool isFolder = false;  ///< a folder's icon
};

/// The entries of one or more archives. Each row carries what belongs to it, so rows and entries stay matched
/// however the list is sorted. Texts are made when they are asked for: a row costs little until it is seen.
class ArchiveListModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Replaces all rows; they stand in this order until SortOn.
    void SetRows(std::vector<ArchiveRow> rows);

    const ArchiveRow& Row(int row) const { return rows_.at(shown_.at(static_cast<std::size_t>(row))); }

    /// Text of one cell, hidden columns included.
    std::string Text(int row, ArchiveColumn column) const;

    /// Sorts on a key column without regard to case, reversing the order when the list stands sorted on it
    /// already. Rows with equal keys keep the order of their entries.
    void SortOn(ArchiveColumn key);

    Qt::SortOrder SortOrder() const { return order_; }

    void SetHeader(ArchiveColumn column, const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                          Qt::MatchFlags flags) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<std::size_t> Sorted() const;

    std::vector<ArchiveRow> rows_;   // as listed, never reordered
    std::vector<std::size_t> shown_; // what stands in each row: a position in rows_
    QString headers_[kArchiveColumns];
    bool isSorted_ = false;
    ArchiveColumn key_ = ArchiveColumn::Name;
    Qt::SortOrder order_ = Qt::AscendingOrder;
};

} // namespace dialogs
