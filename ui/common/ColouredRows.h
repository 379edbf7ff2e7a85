#pragma once

#include <QStyledItemDelegate>

namespace ui {

/// Draws rows of lists and trees so that their own text colour stays while they are selected. A text that is
/// too long is cut at its end or, where that shows more, in its middle; a tooltip then shows all of it.
class ColouredRows : public QStyledItemDelegate {
    Q_OBJECT

  public:
    explicit ColouredRows(QObject* parent, Qt::TextElideMode elide = Qt::ElideRight)
        : QStyledItemDelegate(parent), elide_(elide) {}

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// The editor of a name has a frame, so that it is seen to be one.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    Qt::TextElideMode elide_;
};

} // namespace ui
