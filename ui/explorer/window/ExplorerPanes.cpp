#include "ui/explorer/window/ExplorerPanes.h"

#include "app/Twips.h"
#include "ui/explorer/list/ListView.h"
#include "ui/explorer/tree/TreeView.h"
#include "ui/explorer/window/PaneLayout.h"
#include "ui/explorer/window/StatusStrip.h"
#include "ui/explorer/window/VSplitter.h"

#include <QEvent>
#include <QToolBar>

namespace ui {

namespace {

constexpr int kToolIconSize = 24;

/// Edge of the pixel that a place in twips falls on.
int Px(int twips) {
    return app::PixelsFromTwips(twips);
}

} // namespace

ExplorerPanes::ExplorerPanes(QWidget* parent) : QWidget(parent) {
    tree_ = new TreeView(this); // first, and so first in tab order
    list_ = new ListView(this);
    splitter_ = new VSplitter(this);
    splitter_->lower();
    toolFolder_ = MakeToolBar("toolFolder");
    toolFile_ = MakeToolBar("toolFile");
    toolFile_->hide();
    strip_ = new StatusStrip(this);
    connect(splitter_, &VSplitter::Moved, this, &ExplorerPanes::SplitterMoved);
}

QToolBar* ExplorerPanes::MakeToolBar(const char* name) {
    auto* bar = new QToolBar(this);
    bar->setObjectName(QString::fromLatin1(name));
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setIconSize(QSize(kToolIconSize, kToolIconSize));
    bar->setMovable(false);
    return bar;
}

void ExplorerPanes::ApplyAccessibleNames(const QString& tree, const QString& list) {
    tree_->setAccessibleName(tree);
    list_->setAccessibleName(list);
    toolFolder_->setAccessibleName(tree);
    toolFile_->setAccessibleName(list);
    splitter_->setAccessibleName(tree + QLatin1String(" | ") + list);
}

void ExplorerPanes::ShowFileTools(bool fileTools) {
    toolFile_->setVisible(fileTools);
    toolFolder_->setVisible(!fileTools);
}

void ExplorerPanes::SplitterMoved() {
    if (splitter_->Left() < VSplitter::kSmallestLeft) {
        splitter_->SetLeft(VSplitter::kSmallestLeft);
        return;
    }
    LayoutPanes();
    update();
    toolFolder_->update();
    toolFile_->update();
}

void ExplorerPanes::Place(QWidget* control, int left, int top, int width, int height) {
    control->setGeometry(QStyle::visualRect(layoutDirection(), rect(), QRect(left, top, width, height)));
}

void ExplorerPanes::LayoutPanes() {
    const QToolBar* tools = toolFolder_->isHidden() ? toolFile_ : toolFolder_;
    const int toolHeight = tools->sizeHint().height();
    PaneMeasures in;
    in.width = app::TwipsFromPixels(width()) + kFrameWidthTwips;
    in.height = app::TwipsFromPixels(height()) + kFrameHeightTwips;
    in.toolbarHeight = app::TwipsFromPixels(toolHeight);
    in.splitterLeft = splitter_->Left();
    strip_->Measure(in);
    const PaneLayout out = ComputePaneLayout(in);

    Place(toolFolder_, 0, 0, width(), toolHeight);
    Place(toolFile_, 0, 0, width(), toolHeight);
    Place(strip_, 0, Px(out.stripTop), width(), strip_->WantedHeight());
    strip_->Arrange(out);

    const int paneHeight = out.paneHeight ? Px(*out.paneHeight) : splitter_->height();
    const int treeLeft = Px(out.treeLeft);
    const int treeWidth = out.treeWidth ? Px(out.treeLeft + *out.treeWidth) - treeLeft : tree_->width();
    const int listLeft = Px(out.listLeft);
    const int listWidth = out.listWidth ? Px(out.listLeft + *out.listWidth) - listLeft : list_->width();
    Place(splitter_, Px(in.splitterLeft), Px(out.splitterTop), Px(VSplitter::kWidthTwips), paneHeight);
    Place(tree_, treeLeft, Px(out.treeTop), treeWidth, paneHeight);
    Place(list_, listLeft, Px(out.listTop), listWidth, paneHeight);
    list_->viewport()->update();
}

bool ExplorerPanes::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange)
        LayoutPanes();
    return handled;
}

void ExplorerPanes::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LayoutPanes();
}

} // namespace ui
