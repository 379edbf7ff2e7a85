#pragma once

#include "ui/explorer/list/FileListModel.h"

#include <functional>

namespace ui {

/// Compares rows of the file list in the order that a click on a column header asks for. It keeps a copy of
/// what it needs of `kinds`, so that it stays the same while a sort is under way.
class RowOrder {
  public:
    /// Orders by the text of `column`, which is one that FileListModel::SortColumnFor returns. Rows of a kind
    /// that was added to `kinds` later must not be compared.
    RowOrder(FileListModel::Column column, Qt::SortOrder direction, const FileKinds& kinds);

    /// Whether `left` comes before `right`. Rows with equal keys are ordered by name, in both directions.
    bool Precedes(const FileRow& left, const FileRow& right) const;

  private:
    int Compare(const FileRow& left, const FileRow& right) const;

    FileListModel::Column column_;
    Qt::SortOrder direction_;
    std::vector<std::size_t> typeRanks_; ///< by kind: the rank of its type text in alphabetical order
};

/// Sorts without moving rows. Returns the present positions of the rows, listed in the order in which the
/// rows should stand. Calls `keepGoing` every few milliseconds; when it returns false, the sort stops, does
/// not read `rows` any more and returns an empty list.
std::vector<std::uint32_t> PlacesInOrder(const std::vector<FileRow>& rows, const RowOrder& order,
                                         const std::function<bool()>& keepGoing);

} // namespace ui
