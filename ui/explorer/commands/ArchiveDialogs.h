#pragma once

#include <string>

class QWidget;

namespace ui {

/// Opens the window of each archive format and waits until it is closed. `archives` holds full paths, each
/// followed by CR LF. A test puts one in place that shows nothing.
class ArchiveDialogs {
  public:
    virtual ~ArchiveDialogs() = default;

    virtual void ShowZip(const std::string& archives, QWidget* parent);
    virtual void ShowCab(const std::string& archives, QWidget* parent);
    virtual void ShowRar(const std::string& archives, QWidget* parent);
};

} // namespace ui
