#include "ui/explorer/list/ListView.h"

#include "ui/common/ColouredRows.h"
#include "ui/explorer/list/FileListModel.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace ui {

namespace {

constexpr int kLastColumn = FileListModel::kVisibleColumns - 1;

} // namespace

ListView::ListView(QWidget* parent) : QTreeView(parent) {
    setObjectName(QStringLiteral("ListView"));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setItemDelegate(new ColouredRows(this));
    // A name says most at its ends: how it starts and its extension.
    setItemDelegateForColumn(FileListModel::kName, new ColouredRows(this, Qt::ElideMiddle));
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setHighlightSections(false);
    connect(header(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) { ColumnResized(column, width); });
    connect(this, &QAbstractItemView::doubleClicked, this, &ListView::OpenPressed);
}

void ListView::SetFileModel(FileListModel* model) {
    files_ = model;
    setModel(model);
    for (int column = FileListModel::kVisibleColumns; column < FileListModel::kColumnCount; ++column)
        setColumnHidden(column, true);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
}

int ListView::ColumnWidth(int column) const {
    return column == kLastColumn ? lastColumnWidth_ : columnWidth(column);
}

void ListView::SetColumnWidth(int column, int width) {
    setColumnWidth(column, width);
}

void ListView::ColumnResized(int column, int width) {
    if (stretching_)
        return;
    if (column == kLastColumn)
        lastColumnWidth_ = width;
    StretchLastColumn();
}

void ListView::StretchLastColumn() {
    const QScopedValueRollback<bool> stretching(stretching_, true);
    const int others = header()->length() - columnWidth(kLastColumn);
    setColumnWidth(kLastColumn, qMax(lastColumnWidth_, viewport()->width() - others));
}

void ListView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    StretchLastColumn();
}

QList<int> ListView::SelectedRows() const {
    QList<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::ranges::sort(rows);
    return rows;
}

int ListView::SelectedRow() const {
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isSelected(current))
        return current.row();
    const QList<int> rows = SelectedRows();
    return rows.isEmpty() ? -1 : rows.first();
}

void ListView::EditName(int row) {
    setFocus();
    const QModelIndex name = files_->index(row, FileListModel::kName);
    setCurrentIndex(name);
    edit(name);
    auto* editor = qobject_cast<QLineEdit*>(indexWidget(name));
    if (editor == nullptr)
        return;
    const qsizetype dot = files_->Row(row).isFolder ? -1 : editor->text().lastIndexOf(QLatin1Char('.'));
    if (dot > 0)
        editor->setSelection(0, static_cast<int>(dot));
}

void ListView::SetEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void ListView::keyPressEvent(QKeyEvent* event) {
    // What the editor of a name leaves over, such as the Enter that ends it, is no command.
    if (state() == EditingState)
        QTreeView::keyPressEvent(event);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        emit OpenPressed();
    else if (event->key() == Qt::Key_F5)
        emit RefreshPressed();
    else if (event->key() == Qt::Key_F2)
        emit RenamePressed();
    else if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier)
        emit DeletePressed();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::Copy))
        emit CopyPressed();
    else if (event->matches(QKeySequence::Paste))
        emit PastePressed();
    else
        QTreeView::keyPressEvent(event);
}

void ListView::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    emit FocusReceived();
}

void ListView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (files_ == nullptr || !files_->ShowsFolder() || files_->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    emit MenuWanted(event->globalPos());
    event->accept();
}

} // namespace ui
