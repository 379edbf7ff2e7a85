#include "ui/explorer/tree/TreeView.h"

#include "ui/common/ColouredRows.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace ui {

TreeView::TreeView(QWidget* parent) : QTreeView(parent) {
    setObjectName(QStringLiteral("TreeView"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setItemDelegate(new ColouredRows(this, Qt::ElideMiddle));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(false);
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& node) {
        if (!boxWasClicked_)
            emit NodeClicked(node);
    });
}

bool TreeView::IsOnCheckBox(const QModelIndex& node, const QPoint& position) const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(node);
    option.features |= QStyleOptionViewItem::HasCheckIndicator;
    return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(position);
}

void TreeView::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint position = event->position().toPoint();
    const QModelIndex node = indexAt(position);
    boxWasClicked_ = node.isValid() && IsOnCheckBox(node, position);
    QTreeView::mouseReleaseEvent(event);
    boxWasClicked_ = false;
}

void TreeView::keyPressEvent(QKeyEvent* event) {
    if (state() == EditingState) { // what the editor of a name leaves over is no command
        QTreeView::keyPressEvent(event);
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        emit PastePressed();
        return;
    }
    switch (event->key()) {
    case Qt::Key_F5:
        emit RefreshPressed();
        return;
    case Qt::Key_F2:
        emit RenamePressed();
        return;
    case Qt::Key_Delete:
        emit DeletePressed();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentIndex().isValid())
            emit NodeClicked(currentIndex());
        return;
    default:
        break;
    }
    const QPersistentModelIndex before = currentIndex();
    QTreeView::keyPressEvent(event);
    if (currentIndex().isValid() && currentIndex() != before)
        emit NodeReached(currentIndex());
}

void TreeView::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    emit FocusReceived();
}

} // namespace ui
