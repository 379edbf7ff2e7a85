#pragma once

#include <QFrame>

class QLabel;

namespace ui {

/// The splash window that stands while start-up finishes.
class frmprogress : public QFrame {
    Q_OBJECT

  public:
    frmprogress();

    /// Sets the texts, shows the window in the middle of the screen and paints it at once.
    void ShowNow();

  private:
    void ApplyTexts();

    QLabel* title_;
    QLabel* caption_;
};

} // namespace ui
