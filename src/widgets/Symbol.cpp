#include "Symbol.h"

#include <QHash>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <utility>

namespace lucentra {

namespace {

const QPixmap &rendered(const QString &name, int pixels, const QColor &color)
{
    // Buttons are repainted with every frame of what glows beneath them.
    static QHash<std::pair<QString, std::pair<int, QRgb>>, QPixmap> pictures;
    QPixmap &picture = pictures[{name, {pixels, color.rgba()}}];
    if (picture.isNull()) {
        picture = QPixmap(pixels, pixels);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        QSvgRenderer(QStringLiteral(":/lucentra/symbols/%1.svg").arg(name)).render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), color);
    }
    return picture;
}

} // namespace

void paintSymbol(QPainter &painter, const QString &name, const QRectF &rect, const QColor &color)
{
    const QPixmap &picture = rendered(name, qRound(rect.width() * painter.device()->devicePixelRatioF()), color);
    painter.drawPixmap(rect, picture, picture.rect());
}

QPixmap symbolPixmap(const QString &name, int size, const QColor &color, qreal scale)
{
    QPixmap picture = rendered(name, qRound(size * scale), color);
    picture.setDevicePixelRatio(scale);
    return picture;
}

QIcon symbolIcon(const QString &name, const QColor &color)
{
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 40, 48, 64})
        icon.addPixmap(rendered(name, size, color));
    return icon;
}

} // namespace lucentra
