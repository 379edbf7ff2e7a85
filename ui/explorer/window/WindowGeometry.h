#pragma once

#include <QSize>

class QWidget;

namespace app {
struct Settings;
}

namespace ui {

/// Size and place of the main window: the saved size, in the middle of the screen, each time that the window
/// is opened.
class WindowGeometry {
  public:
    explicit WindowGeometry(QWidget* window) : window_(window) {}

    /// Gives the window its saved outer size and centres it. A length that is not saved as a number is left
    /// alone, as is a window that fills the screen. A screen that is too small bounds size and place.
    void Apply(const app::Settings& settings);

    /// Puts the window's outer size into `settings`. A size that nobody has changed is put there as it was
    /// read.
    void Save(app::Settings& settings) const;

  private:
    QSize FrameSize() const;

    QWidget* window_;
    QSize applied_;      ///< inner size that Apply gave, in pixels
    QSize appliedTwips_; ///< the outer size that it stood for
    QSize appliedFrame_; ///< what the desktop's frame added then
};

} // namespace ui
