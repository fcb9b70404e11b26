#include "Symbol.h"

#include <QHash>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <utility>

namespace lucentra {

namespace {

QPixmap rendered(const QString &name, QSize pixels)
{
    QPixmap picture(pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(QStringLiteral(":/lucentra/symbols/%1.svg").arg(name)).render(&painter);
    return picture;
}

} // namespace

void paintSymbol(QPainter &painter, const QString &name, const QRectF &rect)
{
    const QSize pixels = (rect.size() * painter.device()->devicePixelRatioF()).toSize();
    // Buttons are repainted with every frame of what glows beneath them.
    static QHash<std::pair<QString, int>, QPixmap> pictures;
    QPixmap &picture = pictures[{name, pixels.width()}];
    if (picture.isNull())
        picture = rendered(name, pixels);
    painter.drawPixmap(rect, picture, picture.rect());
}

} // namespace lucentra
