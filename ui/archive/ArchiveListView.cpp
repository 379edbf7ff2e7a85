#include "ui/archive/ArchiveListView.h"

#include "app/Twips.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

namespace ui {
namespace {

/// The column that a click on a header sorts on.
ArchiveColumn SortKeyOf(int section) {
    switch (static_cast<ArchiveColumn>(section)) {
    case ArchiveColumn::Name:
        return ArchiveColumn::SortFile;
    case ArchiveColumn::Modified:
        return ArchiveColumn::SortDate;
    case ArchiveColumn::Size:
        return ArchiveColumn::SortSize;
    case ArchiveColumn::Path:
        return ArchiveColumn::Path;
    default:
        return ArchiveColumn::Name;
    }
}

/// Names, sizes and times read from the left also where the window runs from the right.
class LeftToRightTexts : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override {
        const QString text = value.toString();
        if (QGuiApplication::layoutDirection() == Qt::LeftToRight)
            return text;
        constexpr char16_t kLeftToRightIsolate = 0x2066;
        constexpr char16_t kPopIsolate = 0x2069;
        return QChar(kLeftToRightIsolate) + text + QChar(kPopIsolate);
    }
};

} // namespace

ArchiveListView::ArchiveListView(QWidget* parent) : QTreeView(parent) {
    setModel(&model_);
    setItemDelegate(new LeftToRightTexts(this));
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(ScrollPerPixel);
    setAllColumnsShowFocus(true);
    setTextElideMode(Qt::ElideMiddle);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(false);
    header()->setHighlightSections(false);
    header()->setSortIndicatorShown(false);
    header()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
    // After the minimum size is set: setting it gives hidden columns a width again.
    for (int column = kVisibleArchiveColumns; column < kArchiveColumns; ++column)
        setColumnHidden(column, true);
    connect(header(), &QHeaderView::sectionClicked, this, &ArchiveListView::OnHeaderClicked);
    // The view itself repaints the columns of a row, not what lies beyond them.
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, viewport(),
            qOverload<>(&QWidget::update));
    connect(header(), &QHeaderView::sectionResized, this, &ArchiveListView::OnSectionResized);
}

void ArchiveListView::SetEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void ArchiveListView::ShowFlags() {
    constexpr int kTwips = 2540;
    const int flag = static_cast<int>(ArchiveColumn::Flag);
    setColumnHidden(flag, false);
    header()->resizeSection(flag, app::PixelsFromTwips(kTwips));
}

std::vector<bool> ArchiveListView::SelectedRows() const {
    std::vector<bool> selected(static_cast<std::size_t>(model_.rowCount()));
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            selected[static_cast<std::size_t>(row)] = true;
    return selected;
}

void ArchiveListView::SetLocked(bool isLocked) {
    isLocked_ = isLocked;
    setSelectionMode(isLocked ? NoSelection : ExtendedSelection);
}

void ArchiveListView::OnHeaderClicked(int section) {
    if (isLocked_)
        return;
    model_.SortOn(SortKeyOf(section));
    header()->setSortIndicatorShown(true);
    header()->setSortIndicator(section, model_.SortOrder());
}

void ArchiveListView::OnSectionResized(int section, int, int newWidth) {
    if (!isApplyingWidths_ && section < kVisibleArchiveColumns && viewport()->width() > 0)
        shares_[static_cast<std::size_t>(section)] = static_cast<double>(newWidth) / viewport()->width();
}

void ArchiveListView::ApplyWidths() {
    isApplyingWidths_ = true;
    for (int column = 0; column < kVisibleArchiveColumns; ++column)
        header()->resizeSection(
            column, static_cast<int>(shares_[static_cast<std::size_t>(column)] * viewport()->width()));
    isApplyingWidths_ = false;
}

void ArchiveListView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    ApplyWidths();
}

void ArchiveListView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
    QTreeView::drawRow(painter, option, index);
    // The row runs on beyond the last column.
    const int used = header()->length() - header()->offset();
    const QRect beyond =
        QStyle::visualRect(layoutDirection(), option.rect, option.rect.adjusted(used, 0, 0, 0));
    const auto group = isActiveWindow() && hasFocus() ? QPalette::Active : QPalette::Inactive;
    if (selectionModel()->isRowSelected(index.row()))
        painter->fillRect(beyond, palette().brush(group, QPalette::Highlight));
    else if (index.row() % 2 != 0)
        painter->fillRect(beyond, palette().brush(group, QPalette::AlternateBase));
}

void ArchiveListView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (model_.rowCount() > 0 || emptyText_.isEmpty())
        return;
    QPainter painter(viewport());
    const int margin = fontMetrics().height();
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

} // namespace ui
