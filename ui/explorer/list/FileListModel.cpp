#include "ui/explorer/list/FileListModel.h"

#include "base/Letters.h"
#include "ui/common/WindowTexts.h"
#include "ui/explorer/list/ListFolderFiles.h"
#include "ui/explorer/list/RowOrder.h"
#include "ui/explorer/list/TextColours.h"

#include <algorithm>

namespace ui {

FileListModel::FileListModel(FileKinds& kinds, QObject* parent)
    : QAbstractTableModel(parent), kinds_(kinds),
      headers_(
          {"Name", "Type", "Size", "Date Modified", "Full path", "ModifiedSort", "SortSize", "SortFile"}) {}

void FileListModel::RenameRow(int row, const QString& name) {
    FileRow& changed = rows_[static_cast<std::size_t>(row)];
    SetName(changed, FromWindow(name), kinds_);
    emit dataChanged(index(row, 0), index(row, kColumnCount - 1));
    MoveRowsInOrder();
}

void FileListModel::SetHeader(Column column, const QString& text) {
    headers_[column] = text;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

std::string FileListModel::FullPath(int row) const {
    return folder_ + FromWindow(Row(row).name);
}

int FileListModel::FindRow(std::string_view name) const {
    const QString wanted = ToWindow(base::ToUpper(name));
    const QString folder = ToWindow(base::ToUpper(folder_));
    const bool isPath = !folder.isEmpty() && wanted.startsWith(folder);
    const QStringView inFolder = isPath ? QStringView(wanted).mid(folder.size()) : QStringView(wanted);
    const auto found = std::ranges::find_if(
        rows_, [&](const FileRow& row) { return row.sortName == inFolder || row.sortName == wanted; });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

FileListModel::Column FileListModel::SortColumnFor(int column) {
    switch (column) {
    case kName:
        return kSortFile;
    case kSize:
        return kSortSize;
    case kModified:
        return kSortDate;
    case kType:
    case kPath:
        return static_cast<Column>(column);
    default:
        return kName;
    }
}

bool FileListModel::IsConsistent() const {
    const RowOrder order = OrderInUse();
    return std::ranges::all_of(rows_, [this](const FileRow& row) { return row.kind < kinds_.Count(); }) &&
           std::ranges::is_sorted(
               rows_, [&](const FileRow& left, const FileRow& right) { return order.Precedes(left, right); });
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int FileListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumnCount;
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const FileRow& row = Row(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return TextOf(row, index.column());
    case Qt::DecorationRole:
        return index.column() == kName ? QVariant(kinds_.Icon(row.kind)) : QVariant();
    case Qt::ForegroundRole:
        return row.isCabinet ? QVariant(CabinetColour()) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == kSize ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    default:
        return {};
    }
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() == kName ? flags | Qt::ItemIsEditable : flags;
}

bool FileListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (index.isValid() && index.column() == kName && role == Qt::EditRole)
        emit RenameWanted(ToWindow(FullPath(index.row())), value.toString());
    return false;
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return headers_[static_cast<std::size_t>(section)];
    if (role == Qt::TextAlignmentRole)
        return QVariant((section == kSize ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

QString FileListModel::TextOf(const FileRow& row, int column) const {
    switch (column) {
    case kName:
        return row.name;
    case kType:
        return kinds_.TypeText(row.kind);
    case kSize:
        return ToWindow(FileSizeText(row.size, row.isFolder));
    case kModified:
        return ToWindow(ModifiedText(row.modified));
    case kPath:
        return ToWindow(folder_) + row.name;
    case kSortDate:
        return ToWindow(DateSortText(row.modified));
    case kSortSize:
        return ToWindow(SizeSortText(row.size));
    case kSortFile:
        return ToWindow(NameSortText(FromWindow(row.name), row.isFolder));
    default:
        return {};
    }
}

} // namespace ui
