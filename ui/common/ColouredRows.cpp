#include "ui/common/ColouredRows.h"

#include "ui/common/WindowTexts.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>

namespace ui {

bool ColouredRows::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QRect cell = view->visualRect(index).intersected(view->viewport()->rect());
    if (sizeHint(option, index).width() > cell.width())
        QToolTip::showText(event->globalPos(), index.data().toString().toHtmlEscaped(), view);
    else
        QToolTip::hideText();
    return true;
}

QWidget* ColouredRows::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->setFrame(true);
    return editor;
}

void ColouredRows::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = elide_;
    if (option->direction == Qt::RightToLeft)
        option->text = KeptInOrder(option->text);
    if (index.data(Qt::ForegroundRole).isValid())
        option->palette.setBrush(QPalette::HighlightedText, option->palette.brush(QPalette::Text));
}

} // namespace ui
