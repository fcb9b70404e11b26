#include "SymbolIcon.h"

#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace lucentra {

QPixmap symbolPixmap(const QString &name, int size, const QColor &color, qreal scale)
{
    const int pixels = qRound(size * scale);
    const QString key = u"history-symbol/%1/%2/%3"_s.arg(name).arg(pixels).arg(color.rgba());
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = QPixmap(pixels, pixels);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        QSvgRenderer(u":/lucentra/history/%1.svg"_s.arg(name)).render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), color);
        painter.end();
        QPixmapCache::insert(key, picture);
    }
    picture.setDevicePixelRatio(scale);
    return picture;
}

void paintSymbolIcon(QPainter &painter, const QString &name, const QRectF &rect, const QColor &color)
{
    const QPixmap picture = symbolPixmap(name, qRound(rect.width()), color, painter.device()->devicePixelRatioF());
    painter.drawPixmap(rect, picture, QRectF(picture.rect()));
}

QIcon symbolIcon(const QString &name, const QColor &color)
{
    constexpr int size = 20;
    QIcon icon(symbolPixmap(name, size, color, 1));
    icon.addPixmap(symbolPixmap(name, size, color, 2));
    return icon;
}

} // namespace lucentra
