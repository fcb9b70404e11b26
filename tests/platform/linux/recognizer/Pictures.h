#pragma once

#include "ScreenTextRecognizer.h"
#include "find/MapLines.h"
#include "find/TextNet.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QRect>
#include <QString>

namespace lucentra::pictures {

inline const QString han = QStringLiteral("Noto Sans CJK TC");
inline const QString latin = QStringLiteral("DejaVu Sans");

inline QFont font(const QString &family, int pixels)
{
    QFont result(family);
    result.setPixelSize(pixels);
    return result;
}

inline QImage blank(const QSize &size, const QColor &paper)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(paper);
    return image;
}

/// Writes a line; its baseline begins at `start`. Returns the box of its ink in pixels.
inline QRect write(QImage &image, const QPoint &start, const QString &text, const QFont &font, const QColor &ink)
{
    QImage mask(image.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter onMask(&mask);
    onMask.setFont(font);
    onMask.setPen(Qt::white);
    onMask.drawText(start, text);
    onMask.end();
    QRect box;
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            if (mask.constScanLine(y)[x] > 70)
                box |= QRect(x, y, 1, 1);
        }
    }
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(start, text);
    return box;
}

/// Every pixel of a colour of its own; the same each time.
inline QImage noise(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < image.height(); ++y)
        random.fillRange(reinterpret_cast<quint32 *>(image.scanLine(y)), image.width());
    return image;
}

/// Dots of 3 × 3 pixels every 5 pixels: as many shapes as there can be.
inline QImage dots(const QSize &size)
{
    QImage image = blank(size, Qt::white);
    for (int y = 0; y < image.height(); ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (x % 5 < 3 && y % 5 < 3)
                row[x] = qRgb(0, 0, 0);
        }
    }
    return image;
}

/// What the program's net sees on a picture.
inline TextMaps seen(const QImage &image)
{
    static TextNet net(ScreenTextRecognizer::Options().weights);
    return net.seen(image, 1);
}

inline QList<FoundLine> findLines(const QImage &image, int minimumHeight)
{
    return linesOf(seen(image), minimumHeight);
}

} // namespace lucentra::pictures
