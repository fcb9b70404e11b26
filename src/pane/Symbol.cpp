#include "Symbol.h"

#include <QHash>
#include <QPainter>
#include <QSvgRenderer>

#include <memory>

namespace lucentra {

void paintSymbol(QPainter &painter, const QString &name, const QRectF &rect)
{
    static QHash<QString, std::shared_ptr<QSvgRenderer>> symbols;
    auto &symbol = symbols[name];
    if (!symbol)
        symbol = std::make_shared<QSvgRenderer>(QStringLiteral(":/lucentra/symbols/%1.svg").arg(name));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    symbol->render(&painter, rect);
    painter.restore();
}

} // namespace lucentra
