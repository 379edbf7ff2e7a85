#include "ui/explorer/window/PaneLayout.h"

namespace ui {

namespace {

std::optional<int> IfPositive(int length) {
    return length > 0 ? std::optional<int>(length) : std::nullopt;
}

} // namespace

// The numbers below, in twips:
//
//   10   the gap between the status strip and tree or list; the splitter begins at the strip itself
//   2    the margin left of the tree
//   15   taken off for the tree's right edge, which so lies 13 (15 - 2) before the splitter
//   55   from the splitter's left edge to the list, which covers the last 35 of the splitter's 90
//   110  taken off for the list's right edge, which so lies 70 (110 + 15 - 55) before the window's outer
//        one: the width of the frame
//   200  from the bar's right end to the end of the strip, which has the outer width of the window
//   50   the same for the labels, so that the last one reaches 150 (200 - 50) behind the bar's left end;
//        StatusStrip keeps that part of the label free of text
//   700  the height of title and menu bar
//   104  the height of the frame (94), and the gap of 10 above tree and list
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
