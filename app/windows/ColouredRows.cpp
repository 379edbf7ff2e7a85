#include "app/windows/ColouredRows.h"

namespace app {

void ColouredRows::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(Qt::ForegroundRole).isValid())
        option->palette.setBrush(QPalette::HighlightedText, option->palette.brush(QPalette::Text));
}

} // namespace app
