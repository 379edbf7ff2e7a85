#pragma once

#include <thread>

namespace ui {

/// Reads the system's font configuration on a thread of its own while the program connects to its display.
/// Make it before the application object and destroy it after that is complete; the destructor waits until
/// the reading is done.
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
