#pragma once

#include <QLabel>

namespace explorer {

/// A label that leaves out the middle of a text that is too long for it and shows the whole as its tooltip.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    QSize minimumSizeHint() const override;
};

} // namespace explorer
