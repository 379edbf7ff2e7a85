#include "ui/common/Yield.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/list/RowOrder.h"

namespace ui {

void FileListModel::SetRows(std::string folder, std::vector<FileRow> rows) {
    const unsigned filling = ++fillings_;
    std::vector<std::uint32_t> places;
    for (bool isInOrder = false; !isInOrder;) {
        const unsigned sorting = sortings_;
        places = PlacesInOrder(rows, OrderInUse(), [&] {
            Yield();
            return filling == fillings_ && sorting == sortings_;
        });
        if (filling != fillings_)
            return;
        isInOrder = sorting == sortings_;
    }
    beginResetModel();
    folder_ = std::move(folder);
    rows_ = std::move(rows);
    MoveRowsTo(places);
    endResetModel();
}

void FileListModel::sort(int column, Qt::SortOrder order) {
    if (column < 0)
        return;
    sortColumn_ = SortColumnFor(column);
    direction_ = order;
    MoveRowsInOrder();
}

void FileListModel::MoveRowsInOrder() {
    const unsigned filling = fillings_;
    const unsigned sorting = ++sortings_;
    const std::vector<std::uint32_t> places = PlacesInOrder(rows_, OrderInUse(), [&] {
        Yield();
        return filling == fillings_ && sorting == sortings_;
    });
    if (filling != fillings_ || sorting != sortings_)
        return; // what came between puts its rows in order itself
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    MoveRowsTo(places);
    std::vector<int> newPlaces(rows_.size()); // rows move, selections move with them
    for (std::size_t row = 0; row < places.size(); ++row)
        newPlaces[places[row]] = static_cast<int>(row);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.append(createIndex(newPlaces[static_cast<std::size_t>(index.row())], index.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void FileListModel::MoveRowsTo(const std::vector<std::uint32_t>& places) {
    std::vector<FileRow> ordered;
    ordered.reserve(rows_.size());
    for (const std::uint32_t place : places)
        ordered.push_back(std::move(rows_[place]));
    rows_ = std::move(ordered);
}

RowOrder FileListModel::OrderInUse() const {
    return {sortColumn_, direction_, kinds_};
}

} // namespace ui
