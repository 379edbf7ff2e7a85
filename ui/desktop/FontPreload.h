#pragma once

#include <thread>

namespace ui {

/// Reads the system's font configuration while the program connects to its display. To be made before the
/// application object and to live until that is complete; its end waits for the reading to be done.
class FontPreload {
  public:
    FontPreload();
    ~FontPreload();
    FontPreload(const FontPreload&) = delete;
    FontPreload& operator=(const FontPreload&) = delete;

  private:
    std::thread reader_;
};

} // namespace ui
