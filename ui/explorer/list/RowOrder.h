#pragma once

#include "ui/explorer/list/FileListModel.h"

#include <functional>

namespace ui {

/// An order of file rows: what a click on a header asks for, as it stands at one moment.
class RowOrder {
  public:
    /// By the text of `column`, one that FileListModel::SortColumnFor names; kinds made later are not known.
    RowOrder(FileListModel::Column column, Qt::SortOrder direction, const FileKinds& kinds);

    /// Rows with equal keys stand in name order, whatever the direction.
    bool Precedes(const FileRow& left, const FileRow& right) const;

  private:
    int Compare(const FileRow& left, const FileRow& right) const;

    FileListModel::Column column_;
    Qt::SortOrder direction_;
    std::vector<std::size_t> typeRanks_; ///< place of each kind's type text in alphabetical order
};

/// Where the rows stand now, in the order in which they should. Asks `keepGoing` every few milliseconds,
/// after which `rows` is not touched any more if the answer was no; the result is empty then.
std::vector<std::uint32_t> PlacesInOrder(const std::vector<FileRow>& rows, const RowOrder& order,
                                         const std::function<bool()>& keepGoing);

} // namespace ui
