#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace ui {

/// Asks for one line of text, which may be masked while it is typed.
class InputBox : public QDialog {
    Q_OBJECT

  public:
    explicit InputBox(QWidget* parent = nullptr);

    void SetPrompt(const QString& prompt);
    void SetHidden(bool hidden);
    QString Text() const;

  private:
    QLabel* prompt_;
    QLineEdit* edit_;
};

} // namespace ui
