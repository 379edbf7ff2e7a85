#pragma once

#include "platform/Times.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <string>
#include <vector>

namespace ui {

/// Columns of the archive lists. From SortDate on they serve sorting and bookkeeping and are hidden; only the
/// RAR window shows Flag.
enum class ArchiveColumn { Name, Modified, Size, Path, SortDate, SortSize, Archive, SortFile, Flag };
inline constexpr int kArchiveColumns = 9;
inline constexpr int kVisibleArchiveColumns = 4;

/// Whether an entry stays extracted, as the RAR window notes it.
enum class RowFlag : std::uint8_t { kNone, kTrue, kFalse };

/// One entry as it stands in a list.
struct ArchiveRow {
    std::int32_t entry = 0;   ///< its number in its archive, from 1
    std::int32_t archive = 0; ///< position of its archive in ArchiveListing::archives
    std::string name;         ///< as stored
    std::string path;         ///< folder inside the archive, where the format keeps one apart
    platform::SystemTime modified;
    std::uint64_t size = 0; ///< bytes when unpacked
    QString sizeText;       ///< shown instead of the size unless empty
    char prefix = 0;        ///< shown before the name, if any
    bool isFolder = false;  ///< a folder's icon
    RowFlag flag = RowFlag::kNone;
};

/// An archive whose entries stand in a list.
struct ListedArchive {
    std::string path;
    QString modifiedText =
        {}; ///< shown for each of its entries instead of the entry's own time, unless empty
};

/// What a list shows: the archives, each once, and their entries.
struct ArchiveListing {
    std::vector<ListedArchive> archives;
    std::vector<ArchiveRow> rows;
};

/// The entries of one or more archives. Each row carries what belongs to it, so rows and entries stay matched
/// however the list is sorted. Texts are made when they are asked for: a row costs little until it is seen.
class ArchiveListModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Replaces all rows; they stand in this order until SortOn.
    void SetListing(ArchiveListing listing);

    const ArchiveRow& Row(int row) const {
        return listing_.rows.at(shown_.at(static_cast<std::size_t>(row)));
    }

    const std::vector<ListedArchive>& Archives() const { return listing_.archives; }

    /// Full path of the archive of a row.
    const std::string& ArchiveOf(const ArchiveRow& row) const {
        return listing_.archives.at(static_cast<std::size_t>(row.archive)).path;
    }

    /// Notes for every row, by row, whether its entry stays extracted.
    void SetFlags(const std::vector<bool>& stays);

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
    QString CellText(const ArchiveRow& row, ArchiveColumn column) const;
    std::vector<std::size_t> Sorted() const;

    ArchiveListing listing_;         // as listed, never reordered
    std::vector<std::size_t> shown_; // what stands in each row: a position in listing_.rows
    QString headers_[kArchiveColumns];
    bool isSorted_ = false;
    ArchiveColumn key_ = ArchiveColumn::Name;
    Qt::SortOrder order_ = Qt::AscendingOrder;
};

} // namespace ui
