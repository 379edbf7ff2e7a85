#pragma once

#include <string>

class QWidget;

namespace ui {

/// Interface that shows the properties of a file or folder. ShowProperties uses one implementation at a time:
/// the desktop's, or one that records (tests).
class PropertiesViewer {
  public:
    virtual ~PropertiesViewer() = default;

    /// Opens the window and does not wait for its end. Greater than 32 on success, else a reason in the
    /// shell's numbers: 2 not found.
    virtual int Show(const std::string& path, QWidget* ownerWindow) = 0;
};

/// Puts another viewer in place (null: the desktop) and returns the one before. The caller keeps ownership.
PropertiesViewer* SetPropertiesViewer(PropertiesViewer* viewer);

/// The properties of a file, folder or drive: in the window of the desktop's file manager where there is one,
/// else in our own.
int ShowProperties(const std::string& path, QWidget* ownerWindow);

} // namespace ui
