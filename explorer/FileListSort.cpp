#include "app/windows/WindowTexts.h"
#include "explorer/FileListModel.h"
#include "platform/Letters.h"

#include <algorithm>
#include <numeric>

namespace explorer {

namespace {

template <class Key>
int Order(const Key& left, const Key& right) {
    return left < right ? -1 : (right < left ? 1 : 0);
}

/// Folders before files, then by name: what the name sort keys "00..." and "11..." say.
int OrderByName(const FileRow& left, const FileRow& right) {
    if (left.isFolder != right.isFolder)
        return left.isFolder ? -1 : 1;
    return left.sortName.compare(right.sortName);
}

} // namespace

void FileListModel::sort(int column, Qt::SortOrder order) {
    if (column < 0)
        return;
    sortColumn_ = SortColumnFor(column);
    order_ = order;
    MoveRowsInOrder();
}

void FileListModel::MoveRowsInOrder() {
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    // Rows move, selections move with them: each row remembers where it stood.
    std::vector<std::uint32_t> places(rows_.size());
    std::iota(places.begin(), places.end(), 0U);
    RankTypes();
    std::stable_sort(places.begin(), places.end(), [this](std::uint32_t left, std::uint32_t right) {
        return Precedes(rows_[left], rows_[right]);
    });
    std::vector<FileRow> sorted;
    sorted.reserve(rows_.size());
    std::vector<int> newPlaces(rows_.size());
    for (const std::uint32_t place : places) {
        newPlaces[place] = static_cast<int>(sorted.size());
        sorted.push_back(std::move(rows_[place]));
    }
    rows_ = std::move(sorted);

    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.append(createIndex(newPlaces[static_cast<std::size_t>(index.row())], index.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void FileListModel::SortRows() {
    RankTypes();
    std::stable_sort(rows_.begin(), rows_.end(),
                     [this](const FileRow& left, const FileRow& right) { return Precedes(left, right); });
}

void FileListModel::RankTypes() {
    std::vector<QString> texts(kinds_.Count());
    for (std::size_t kind = 0; kind < texts.size(); ++kind) {
        const std::string text = app::FromWindow(kinds_.TypeText(static_cast<FileKinds::Number>(kind)));
        texts[kind] = app::ToWindow(platform::ToUpper(text));
    }
    std::vector<QString> ordered = texts;
    std::ranges::sort(ordered);
    typeRanks_.resize(texts.size());
    for (std::size_t kind = 0; kind < texts.size(); ++kind)
        typeRanks_[kind] =
            static_cast<std::size_t>(std::ranges::lower_bound(ordered, texts[kind]) - ordered.begin());
}

bool FileListModel::Precedes(const FileRow& left, const FileRow& right) const {
    int order = Compare(left, right);
    if (order_ == Qt::DescendingOrder)
        order = -order;
    return (order != 0 ? order : OrderByName(left, right)) < 0;
}

int FileListModel::Compare(const FileRow& left, const FileRow& right) const {
    switch (sortColumn_) {
    case kSortSize:
        return Order(left.size, right.size);
    case kSortDate:
        return Order(left.modified, right.modified);
    case kType:
        return Order(typeRanks_[left.kind], typeRanks_[right.kind]);
    case kSortFile:
        return OrderByName(left, right);
    default: // all rows share one folder: the full path orders as the name does
        return left.sortName.compare(right.sortName);
    }
}

} // namespace explorer
