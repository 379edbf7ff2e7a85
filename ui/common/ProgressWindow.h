#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace ui {

/// Tells how far work on files has come, and takes the wish to stop it. Modal to the whole program.
class ProgressWindow : public QDialog {
    Q_OBJECT

  public:
    ProgressWindow(const QString& title, QWidget* parent);

    /// What is worked on now; long paths are cut in the middle.
    void SetPath(const QString& path);
    /// From 0 to 1; below 0 when that is not known yet.
    void SetFraction(double fraction);
    void SetFigures(const QString& figures);

    bool IsStopped() const { return isStopped_; }

    /// Escape and the close button stop the work too.
    void reject() override;

  private:
    QLabel* path_;
    QProgressBar* bar_;
    QLabel* figures_;
    QPushButton* stop_;
    bool isStopped_ = false;
};

} // namespace ui
