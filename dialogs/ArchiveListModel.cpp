#include "ArchiveListModel.h"

#include "DateText.h"
#include "platform/Letters.h"
#include "platform/desktop/ShellInfo.h"

#include <algorithm>
#include <cstdio>
#include <numeric>

namespace dialogs {
namespace {

/// A date and time as one number that orders as its sort text does.
std::uint64_t DateNumber(const platform::SystemTime& time) {
    std::uint64_t number = static_cast<std::uint64_t>(time.year);
    for (const int part : {time.month, time.day, time.hour, time.minute, time.second})
        number = number * 100 + static_cast<std::uint64_t>(part);
    return number;
}

std::string PaddedSize(std::uint64_t size) {
    char text[32];
    std::snprintf(text, sizeof text, "%021llu", static_cast<unsigned long long>(size));
    return text;
}

/// Positions 0..keys.size()-1 in the order of their keys.
template <typename Key>
std::vector<std::size_t> Ordered(const std::vector<Key>& keys, Qt::SortOrder order) {
    std::vector<std::size_t> positions(keys.size());
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    const auto less = [&keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; };
    const auto greater = [&keys](std::size_t a, std::size_t b) { return keys[b] < keys[a]; };
    if (order == Qt::AscendingOrder)
        std::stable_sort(positions.begin(), positions.end(), less);
    else
        std::stable_sort(positions.begin(), positions.end(), greater);
    return positions;
}

Qt::Alignment AlignmentOf(ArchiveColumn column) {
    return Qt::AlignVCenter | (column == ArchiveColumn::Size ? Qt::AlignRight : Qt::AlignLeft);
}

std::string CellText(const ArchiveRow& row, ArchiveColumn column) {
    switch (column) {
    case ArchiveColumn::Name:
        return row.prefix + row.name;
    case ArchiveColumn::Modified:
        return GeneralDateText(row.modified).toStdString();
    case ArchiveColumn::Size:
        return row.sizeText.isEmpty() ? std::to_string(row.size) : row.sizeText.toStdString();
    case ArchiveColumn::Path:
        return row.path;
    case ArchiveColumn::SortDate:
        return SortDateText(row.modified);
    case ArchiveColumn::SortSize:
        return PaddedSize(row.size);
    case ArchiveColumn::Archive:
        return row.archive;
    case ArchiveColumn::SortFile:
        return "11" + row.name;
    }
    return {};
}

} // namespace

void ArchiveListModel::SetRows(std::vector<ArchiveRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    shown_.resize(rows_.size());
    std::iota(shown_.begin(), shown_.end(), std::size_t{0});
    isSorted_ = false;
    endResetModel();
}

std::string ArchiveListModel::Text(int row, ArchiveColumn column) const {
    return CellText(Row(row), column);
}

std::vector<std::size_t> ArchiveListModel::Sorted() const {
    // Dates and sizes order as their fixed-width texts do, without the texts.
    if (key_ == ArchiveColumn::SortDate || key_ == ArchiveColumn::SortSize) {
        std::vector<std::uint64_t> keys(rows_.size());
        std::transform(rows_.begin(), rows_.end(), keys.begin(), [this](const ArchiveRow& row) {
            return key_ == ArchiveColumn::SortSize ? row.size : DateNumber(row.modified);
        });
        return Ordered(keys, order_);
    }
    std::vector<std::string> keys(rows_.size());
    std::transform(rows_.begin(), rows_.end(), keys.begin(),
                   [this](const ArchiveRow& row) { return platform::ToUpper(CellText(row, key_)); });
    return Ordered(keys, order_);
}

void ArchiveListModel::SortOn(ArchiveColumn key) {
    const bool again = isSorted_ && key == key_;
    order_ = again && order_ == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    key_ = key;
    isSorted_ = true;

    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<std::size_t> sorted = Sorted();
    std::vector<int> rowOf(sorted.size());
    for (std::size_t row = 0; row < sorted.size(); ++row)
        rowOf[sorted[row]] = static_cast<int>(row);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.append(createIndex(rowOf[shown_[static_cast<std::size_t>(index.row())]], index.column()));
    shown_ = std::move(sorted);
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

void ArchiveListModel::SetHeader(ArchiveColumn column, const QString& text) {
    const int section = static_cast<int>(column);
    headers_[section] = text;
    emit headerDataChanged(Qt::Horizontal, section, section);
}

int ArchiveListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ArchiveListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kArchiveColumns;
}

QVariant ArchiveListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto column = static_cast<ArchiveColumn>(index.column());
    const ArchiveRow& row = Row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdString(CellText(row, column));
    case Qt::ToolTipRole:
        // Long names are cut in the list.
        return column == ArchiveColumn::Name ? QString::fromStdString(row.name) : QVariant();
    case Qt::DecorationRole:
        return column == ArchiveColumn::Name ? platform::FileIcon(row.name, row.isFolder) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(AlignmentOf(column));
    default:
        return {};
    }
}

/// Typing in the list goes to the entry whose name begins so; the prefix, which nobody types, does not count.
QModelIndexList ArchiveListModel::match(const QModelIndex& start, int role, const QVariant& value, int hits,
                                        Qt::MatchFlags flags) const {
    const bool isTyping = role == Qt::DisplayRole && (flags & Qt::MatchTypeMask) == Qt::MatchStartsWith;
    if (!isTyping || !start.isValid() || start.column() != static_cast<int>(ArchiveColumn::Name))
        return QAbstractTableModel::match(start, role, value, hits, flags);
    const std::string wanted = value.toString().toStdString();
    QModelIndexList found;
    for (int step = 0; step < rowCount() && (hits < 0 || found.size() < hits); ++step) {
        const int row = (start.row() + step) % rowCount();
        if (row < start.row() && !flags.testFlag(Qt::MatchWrap))
            break;
        if (platform::StartsWithNoCase(Row(row).name, wanted))
            found.append(index(row, start.column()));
    }
    return found;
}

QVariant ArchiveListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kArchiveColumns)
        return {};
    if (role == Qt::DisplayRole)
        return headers_[section];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(AlignmentOf(static_cast<ArchiveColumn>(section)));
    return {};
}

} // namespace dialogs
