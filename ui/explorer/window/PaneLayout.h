#pragma once

#include <optional>

namespace ui {

/// The measures that the layout is computed from. Lengths are in twips, positions are relative to the
/// window's inner area.
struct PaneMeasures {
    int width = 0;             ///< outer width of the window
    int height = 0;            ///< outer height of the window
    int toolbarTop = 0;        ///< top of the toolbar that is visible
    int toolbarHeight = 0;     ///< height of the toolbar that is visible
    int stripHeight = 0;       ///< height of the status strip under the toolbar
    int splitterLeft = 0;      ///< left edge of the splitter between tree and list
    int progressWidth = 0;     ///< width of the bar that shows how full the drive is
    int sizeLabelWidth = 0;    ///< width of the caption in front of the free space
    int percentLabelWidth = 0; ///< width of the label with the free space and its percentage
};

/// Where the parts of the window go, in twips. A width or height without a value stays as it was.
struct PaneLayout {
    int treeTop = 0;               ///< top edge of the tree
    int treeLeft = 0;              ///< left edge of the tree
    std::optional<int> treeWidth;  ///< up to the splitter
    int listTop = 0;               ///< top edge of the file list
    int listLeft = 0;              ///< left edge of the file list
    std::optional<int> listWidth;  ///< up to the window's right edge
    int stripTop = 0;              ///< top edge of the status strip
    int stripWidth = 0;            ///< width of the status strip; the next three count from its right end
    int progressLeft = 0;          ///< left edge of the bar
    int sizeLabelLeft = 0;         ///< left edge of the caption in front of the free space
    int percentLabelLeft = 0;      ///< left edge of the label with the free space
    int splitterTop = 0;           ///< top edge of the splitter
    std::optional<int> paneHeight; ///< height of splitter, tree and list
};

/// What the layout takes off the outer width and height for the window's frame, title and menu bar. Desktops
/// draw frames of different sizes, so the window adds these numbers to its inner size instead of measuring a
/// frame; tree and list then reach exactly to its inner edges.
inline constexpr int kFrameWidthTwips = 70;
inline constexpr int kFrameHeightTwips = 794;

/// Computes the layout. It depends on `measures` alone.
PaneLayout ComputePaneLayout(const PaneMeasures& measures);

} // namespace ui
