#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace ui {

struct DriveSpaceFigures;
struct PaneLayout;
struct PaneMeasures;

/// The strip under the toolbars: where the list is, and how much room the program's drive has left.
class StatusStrip : public QWidget {
    Q_OBJECT

  public:
    explicit StatusStrip(QWidget* parent = nullptr);

    void SetCaptions(const QString& location, const QString& space);
    void SetLocation(const QString& location);
    QString Location() const;

    /// Shows the figures under `caption`; figures of which no share can be told leave the display as it is.
    void SetSpace(const QString& caption, const DriveSpaceFigures& figures);
    void ShowSpace();

    int WantedHeight() const;
    /// Adds the widths of the strip's own controls, in twips.
    void Measure(PaneMeasures& measures) const;
    /// Places the controls inside the strip.
    void Arrange(const PaneLayout& layout);

  private:
    void Place(QWidget* control, int left, int width);

    QLabel* locationCaption_;
    QLabel* location_;
    QLabel* spaceCaption_;
    QLabel* percent_;
    QProgressBar* bar_;
};

} // namespace ui
