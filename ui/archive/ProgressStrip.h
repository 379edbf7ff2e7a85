#pragma once

#include <QWidget>

namespace ui {

/// A strip that fills with the highlight colour as work goes on.
class ProgressStrip : public QWidget {
    Q_OBJECT

  public:
    explicit ProgressStrip(QWidget* parent = nullptr);

    /// From 0, empty, to 1, full. Painted at the next chance, and only when it makes a visible difference.
    void SetFraction(double fraction);

    double Fraction() const { return fraction_; }

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int FilledWidth() const;

    double fraction_ = 0;
};

} // namespace ui
