#pragma once

#include <QObject>

namespace ui {

/// While it lives, what the user does to this program's windows is dropped, so that no command starts inside
/// another one; the windows go on painting themselves. For calls that run the system's message loop.
class InputPause : public QObject {
    Q_OBJECT

  public:
    InputPause();
    /// What has been done until now is dropped too.
    ~InputPause() override;

    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace ui
