#pragma once

#include <optional>

namespace ui {

/// What the layout arithmetic starts from; lengths in twips.
struct PaneMeasures {
    int width = 0;  ///< outer width of the window
    int height = 0; ///< outer height of the window
    int toolbarTop = 0;
    int toolbarHeight = 0; ///< of the toolbar that is visible
    int stripHeight = 0;
    int splitterLeft = 0;
    int progressWidth = 0;
    int sizeLabelWidth = 0;
    int percentLabelWidth = 0;
};

/// Where everything goes; lengths in twips. A width or height without a value keeps what it was.
struct PaneLayout {
    int treeTop = 0;
    int treeLeft = 0;
    std::optional<int> treeWidth;
    int listTop = 0;
    int listLeft = 0;
    std::optional<int> listWidth;
    int stripTop = 0;
    int stripWidth = 0;
    int progressLeft = 0;
    int sizeLabelLeft = 0;
    int percentLabelLeft = 0;
    int splitterTop = 0;
    std::optional<int> paneHeight; ///< of splitter, tree and list
};

/// What the arithmetic takes off the outer size for the window's frame, title and menu bar, and so what has
/// to be added to the inner size to reach the panes' edges exactly, whatever frame a desktop draws.
inline constexpr int kFrameWidthTwips = 70;
inline constexpr int kFrameHeightTwips = 794;

PaneLayout ComputePaneLayout(const PaneMeasures& measures);

} // namespace ui
