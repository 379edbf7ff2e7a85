#include "ui/explorer/window/PaneLayout.h"

namespace ui {

namespace {

std::optional<int> IfPositive(int length) {
    return length > 0 ? std::optional<int>(length) : std::nullopt;
}

} // namespace

PaneLayout ComputePaneLayout(const PaneMeasures& in) {
    PaneLayout out;
    const int top = in.toolbarHeight + in.stripHeight + 10;
    out.treeTop = top;
    out.treeLeft = 2;
    out.treeWidth = IfPositive(in.splitterLeft - 15);
    out.listTop = top;
    out.listLeft = in.splitterLeft + 55;
    out.listWidth = IfPositive(in.width - (in.splitterLeft + 15) - 110);
    out.stripTop = in.toolbarTop + in.toolbarHeight;
    out.stripWidth = in.width;
    out.progressLeft = out.stripWidth - (in.progressWidth + 200);
    out.sizeLabelLeft = out.stripWidth - (in.progressWidth + in.sizeLabelWidth + in.percentLabelWidth + 50);
    out.percentLabelLeft = out.stripWidth - (in.progressWidth + in.percentLabelWidth + 50);
    out.splitterTop = out.treeTop - 10;
    out.paneHeight = IfPositive(in.height - in.toolbarHeight - in.stripHeight - 700 - 104);
    return out;
}

} // namespace ui
