#include "app/windows/ColouredRows.h"

#include "app/windows/WindowTexts.h"

namespace app {

void ColouredRows::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = elide_;
    if (option->direction == Qt::RightToLeft)
        option->text = KeptInOrder(option->text);
    if (index.data(Qt::ForegroundRole).isValid())
        option->palette.setBrush(QPalette::HighlightedText, option->palette.brush(QPalette::Text));
}

} // namespace app
