#pragma once

#include <QDialog>

#include <string>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace ui {

/// The report window: a status, a message, and a numbered list of file paths. While it is open it stays above
/// all other windows.
class frmMessage : public QDialog {
    Q_OBJECT

  public:
    explicit frmMessage(QWidget* parent = nullptr);

    void SetStatus(const std::string& text);
    void SetMessage(const std::string& text);
    /// Adds a line of the report, numbered from 1.
    void AddPath(const std::string& path);

    /// Shows the window until it is closed.
    void ShowNow();

  protected:
    bool event(QEvent* event) override;

  private:
    void Build();

    QLabel* lbstatus_;
    QLabel* Label1_;
    QTreeWidget* ListView1_;
    QPushButton* cmdOk_;
};

} // namespace ui
