#include "ui/archive/ArchiveListModel.h"

#include "base/Letters.h"
#include "ui/archive/DateText.h"
#include "ui/desktop/ShellInfo.h"

#include <algorithm>
#include <cstdio>
#include <numeric>

namespace ui {
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

} // namespace

QString ArchiveListModel::CellText(const ArchiveRow& row, ArchiveColumn column) const {
    switch (column) {
    case ArchiveColumn::Name:
        return (row.prefix ? QString(QLatin1Char(row.prefix)) : QString()) + QString::fromStdString(row.name);
    case ArchiveColumn::Modified: {
        const QString& ofArchive = listing_.archives[static_cast<std::size_t>(row.archive)].modifiedText;
        return ofArchive.isEmpty() ? GeneralDateText(row.modified) : ofArchive;
    }
    case ArchiveColumn::Size:
        return row.sizeText.isEmpty() ? QString::number(row.size) : row.sizeText;
    case ArchiveColumn::Path:
        return QString::fromStdString(row.path);
    case ArchiveColumn::SortDate:
        return QString::fromStdString(SortDateText(row.modified));
    case ArchiveColumn::SortSize:
        return QString::fromStdString(PaddedSize(row.size));
    case ArchiveColumn::Archive:
        return QString::fromStdString(ArchiveOf(row));
    case ArchiveColumn::SortFile:
        return QLatin1String("11") + QString::fromStdString(row.name);
    case ArchiveColumn::Flag:
        return row.flag == RowFlag::kNone ? QString()
                                          : QLatin1String(row.flag == RowFlag::kTrue ? "True" : "False");
    }
    return {};
}

void ArchiveListModel::SetListing(ArchiveListing listing) {
    beginResetModel();
    listing_ = std::move(listing);
    shown_.resize(listing_.rows.size());
    std::iota(shown_.begin(), shown_.end(), std::size_t{0});
    isSorted_ = false;
    endResetModel();
}

void ArchiveListModel::SetFlags(const std::vector<bool>& stays) {
    for (std::size_t row = 0; row < stays.size(); ++row)
        listing_.rows.at(shown_.at(row)).flag = stays[row] ? RowFlag::kTrue : RowFlag::kFalse;
    const int column = static_cast<int>(ArchiveColumn::Flag);
    if (!stays.empty())
        emit dataChanged(index(0, column), index(rowCount() - 1, column));
}

std::vector<std::size_t> ArchiveListModel::Sorted() const {
    const std::vector<ArchiveRow>& rows = listing_.rows;
    // Dates and sizes order as their fixed-width texts do, without the texts.
    if (key_ == ArchiveColumn::SortDate || key_ == ArchiveColumn::SortSize) {
        std::vector<std::uint64_t> keys(rows.size());
        std::transform(rows.begin(), rows.end(), keys.begin(), [this](const ArchiveRow& row) {
            return key_ == ArchiveColumn::SortSize ? row.size : DateNumber(row.modified);
        });
        return Ordered(keys, order_);
    }
    std::vector<std::string> keys(rows.size());
    std::transform(rows.begin(), rows.end(), keys.begin(), [this](const ArchiveRow& row) {
        return base::ToUpper(CellText(row, key_).toStdString());
    });
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
    return parent.isValid() ? 0 : static_cast<int>(listing_.rows.size());
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
        return CellText(row, column);
    case Qt::ToolTipRole:
        // Long names are cut in the list.
        return column == ArchiveColumn::Name ? QString::fromStdString(row.name) : QVariant();
    case Qt::DecorationRole:
        return column == ArchiveColumn::Name ? FileIcon(row.name, row.isFolder) : QVariant();
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
        if (base::StartsWithNoCase(Row(row).name, wanted))
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

} // namespace ui
