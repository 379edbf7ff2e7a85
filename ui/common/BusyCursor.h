#pragma once

namespace ui {

/// Shows the hourglass pointer for as long as it lives; guards may nest.
class BusyCursor {
  public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

} // namespace ui
