#pragma once

#include <QIconEngine>
#include <QString>

namespace ui {

/// An icon from pictures in several sizes. A picture is read when it is first shown: most sizes of most icons
/// never are, and reading them all would take a good part of the program's start.
class DrawnIcon final : public QIconEngine {
  public:
    /// The drawings by name; `selected` takes the place of `normal` in selected rows, which are never tinted:
    /// in the row's own colour the icon would be lost.
    DrawnIcon(QString normal, QString selected);

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;

    bool isNull() override { return sizes_.isEmpty(); }

    QString iconName() override { return normal_; }

    QIconEngine* clone() const override { return new DrawnIcon(*this); }

  private:
    int Fitting(const QSize& size) const;

    QString normal_;
    QString selected_;
    QList<int> sizes_; ///< edges in pixels, from the smallest
};

} // namespace ui
