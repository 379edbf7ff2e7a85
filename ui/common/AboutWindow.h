#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace ui {

/// The About box: name, version and legal notice of the program, and a button that starts the operating
/// system's information program.
class frmAbout : public QDialog {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent = nullptr);

    /// Sets the texts and shows the box until it is closed.
    void ShowNow();

    /// Starts the operating system's information program, or tells the user that there is none.
    void StartSysInfo();

  private:
    void Build();
    void ApplyTexts();

    QLabel* lblTitle_;
    QLabel* lblVersion_;
    QLabel* lblDisclaimer_;
    QPushButton* cmdOk_;
    QPushButton* cmdSysInfo_;
};

} // namespace ui
