#include "TintedSymbol.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace lucentra {

namespace {

QPixmap tinted(const QString &name, int size, const QColor &color)
{
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(QStringLiteral(":/lucentra/form-symbols/%1.svg").arg(name)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

} // namespace

QIcon tintedSymbol(const QString &name, const QPalette &palette)
{
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 40, 48, 64}) {
        icon.addPixmap(tinted(name, size, palette.color(QPalette::Active, QPalette::ButtonText)));
        icon.addPixmap(tinted(name, size, palette.color(QPalette::Disabled, QPalette::ButtonText)), QIcon::Disabled);
    }
    return icon;
}

} // namespace lucentra
