#pragma once

#include "ui/archive/ArchiveListModel.h"

#include <QTreeView>

#include <array>
#include <vector>

namespace ui {

/// The report list of an archive window: sorts on a click on a header, keeps its columns in proportion to its
/// width, and says so when it is empty.
class ArchiveListView : public QTreeView {
    Q_OBJECT

  public:
    explicit ArchiveListView(QWidget* parent = nullptr);

    ArchiveListModel& Rows() { return model_; }

    const ArchiveListModel& Rows() const { return model_; }

    /// Shown in place of rows while there are none.
    void SetEmptyText(const QString& text);

    /// Shows the column Flag, at its width: empty, it would only make the list scroll.
    void ShowFlags();

    /// Whether each row is selected, by row; a lookup per row would be slow with many separate selections.
    std::vector<bool> SelectedRows() const;

    /// While locked neither selection nor order changes; the list can still be scrolled.
    void SetLocked(bool isLocked);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

  private:
    void OnHeaderClicked(int section);
    void OnSectionResized(int section, int oldWidth, int newWidth);
    void ApplyWidths();

    ArchiveListModel model_;
    QString emptyText_;
    bool isLocked_ = false;
    bool isApplyingWidths_ = false;
    // Of the list's width; a column that the user drags takes a new share.
    std::array<double, kVisibleArchiveColumns> shares_{0.30, 0.25, 0.15, 0.20};
};

} // namespace ui
