#pragma once

#include <QLabel>

namespace ui {

/// A label that cuts a long path in the middle instead of asking for more room; the whole text is its tool
/// tip.
class PathLabel : public QLabel {
    Q_OBJECT

  public:
    explicit PathLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ui
