#pragma once

namespace ui {

/// Starts the program with which the system tells about itself; false when there is none.
bool StartSystemInformation();

} // namespace ui
