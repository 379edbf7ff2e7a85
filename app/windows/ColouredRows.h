#pragma once

#include <QStyledItemDelegate>

namespace app {

/// Draws rows of lists and trees whose own text colour stays while they are selected.
class ColouredRows : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace app
