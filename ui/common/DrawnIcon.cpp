#include "ui/common/DrawnIcon.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QResource>
#include <QStyle>
#include <QStyleOption>

#include <utility>

namespace ui {

namespace {

constexpr int kSizes[] = {16, 20, 24, 32, 40, 48, 64, 128};

QString FileOf(const QString& name, int size) {
    return QStringLiteral(":/icons/%1-%2.rgba").arg(name).arg(size);
}

/// The picture in a file of plain pixels, which is as wide as it is high.
QPixmap ReadPicture(const QString& file, int size) {
    constexpr int kPixelBytes = 4;
    const QByteArray pixels = QResource(file).uncompressedData();
    if (pixels.size() != qsizetype{size} * size * kPixelBytes)
        return {};
    const QImage stored(reinterpret_cast<const uchar*>(pixels.constData()), size, size, size * kPixelBytes,
                        QImage::Format_RGBA8888_Premultiplied);
    return QPixmap::fromImage(stored.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

} // namespace

DrawnIcon::DrawnIcon(QString normal, QString selected)
    : normal_(std::move(normal)), selected_(std::move(selected)) {
    for (const int size : kSizes) {
        if (QResource(FileOf(normal_, size)).isValid())
            sizes_.append(size);
    }
}

/// Edge of the smallest picture that is no smaller than `size`; of the largest where all are.
int DrawnIcon::Fitting(const QSize& size) const {
    const int wanted = qMin(size.width(), size.height());
    for (const int edge : sizes_) {
        if (edge >= wanted)
            return edge;
    }
    return sizes_.last();
}

QSize DrawnIcon::actualSize(const QSize& size, QIcon::Mode, QIcon::State) {
    if (isNull() || size.isEmpty())
        return {};
    const int edge = qMin(Fitting(size), qMin(size.width(), size.height()));
    return {edge, edge};
}

QPixmap DrawnIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    const QSize shown = actualSize(size, mode, state);
    if (shown.isEmpty())
        return {};
    const int edge = Fitting(size);
    const QString file = FileOf(mode == QIcon::Selected ? selected_ : normal_, edge);
    const qint64 greyOf = mode == QIcon::Disabled ? QApplication::palette().cacheKey() : 0;
    const QString key = QStringLiteral("%1 %2 %3").arg(file).arg(shown.width()).arg(greyOf);
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    picture = ReadPicture(file, edge);
    if (picture.size() != shown)
        picture = picture.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (mode == QIcon::Disabled) {
        QStyleOption option;
        option.palette = QApplication::palette();
        picture = QApplication::style()->generatedIconPixmap(mode, picture, &option);
    }
    QPixmapCache::insert(key, picture);
    return picture;
}

void DrawnIcon::paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) {
    const qreal ratio = painter->device()->devicePixelRatio();
    QPixmap picture = pixmap(place.size() * ratio, mode, state);
    picture.setDevicePixelRatio(ratio);
    const QSize size = picture.deviceIndependentSize().toSize();
    painter->drawPixmap(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, place), picture);
}

/// What is asked of a window's icon, of which each window hands all sizes to the display: what window
/// managers and task bars show, and no more. On a finer display the toolkit multiplies them.
QList<QSize> DrawnIcon::availableSizes(QIcon::Mode, QIcon::State) {
    return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}};
}

} // namespace ui
