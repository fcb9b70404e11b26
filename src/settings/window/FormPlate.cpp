#include "FormPlate.h"

#include <QLayout>
#include <QPainter>

namespace lucentra {

namespace {

constexpr qreal cornerRadius = 9;
constexpr int lineInset = 14;

QColor mixed(const QColor &one, const QColor &other, qreal share)
{
    const auto part = [share](int a, int b) { return int(a + (b - a) * share); };
    return {part(one.red(), other.red()), part(one.green(), other.green()), part(one.blue(), other.blue())};
}

} // namespace

FormPlate::FormPlate(QWidget *parent)
    : QFrame(parent)
{
}

void FormPlate::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor window = palette().color(QPalette::Window);
    const QColor text = palette().color(QPalette::WindowText);
    const bool isDark = window.lightness() < text.lightness();
    const QColor plate = isDark ? mixed(window, Qt::white, 0.06) : mixed(window, Qt::white, 0.7);
    const QColor line = mixed(plate, text, 0.14);
    painter.setPen(QPen(line, 1));
    painter.setBrush(plate);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    painter.setRenderHint(QPainter::Antialiasing, false);
    bool isFirst = true;
    for (int i = 0; i < layout()->count(); ++i) {
        const QWidget *row = layout()->itemAt(i)->widget();
        if (!row || row->isHidden())
            continue;
        if (!isFirst && !row->property(continuesRow).toBool())
            painter.drawLine(lineInset, row->y(), width() - lineInset, row->y());
        isFirst = false;
    }
}

} // namespace lucentra
