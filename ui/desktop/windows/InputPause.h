#pragma once

#include <QObject>

namespace ui {

/// While an object of this class lives, input to this program's windows is dropped, so that no command starts
/// inside another one; the windows still paint themselves. It is for calls that run the message loop of
/// Windows.
class InputPause : public QObject {
    Q_OBJECT

  public:
    InputPause();
    /// What has been done until now is dropped too.
    ~InputPause() override;

    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace ui
