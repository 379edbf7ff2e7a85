#pragma once

#include <QWidget>

namespace ui {

/// The vertical splitter between the panes. It keeps its left edge in twips, exactly as it was set, and sends
/// a signal when it has been moved. The layout decides where it is drawn.
class VSplitter : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kWidthTwips = 90;
    static constexpr int kSmallestLeft = 100; ///< in twips; where it springs back to

    explicit VSplitter(QWidget* parent = nullptr);

    int Left() const { return left_; }

    /// Moves the left edge, in twips, and says so.
    void SetLeft(int twips);

  signals:
    void Moved();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    int left_ = 0;
    int grip_ = 0; ///< where in the splitter the mouse holds it, in pixels from the edge that Left counts
};

} // namespace ui
