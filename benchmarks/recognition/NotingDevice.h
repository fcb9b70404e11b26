#pragma once

#include <QFontMetricsF>
#include <QJsonArray>
#include <QList>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QTransform>

namespace lucentra {

struct Word
{
    QRectF ink; // pixels of the picture
    double baseline;
    QString text;
};

/// Notes what is written, and paints nothing.
class NotingEngine : public QPaintEngine
{
public:
    NotingEngine()
        : QPaintEngine(AllFeatures)
    {
    }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &changed) override
    {
        if (changed.state() & DirtyTransform)
            m_transform = changed.transform();
    }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF &at, const QTextItem &item) override
    {
        const QRectF ink = QFontMetricsF(item.font()).tightBoundingRect(item.text()).translated(at);
        if (!item.text().trimmed().isEmpty())
            words.append({m_transform.mapRect(ink), m_transform.map(at).y(), item.text()});
    }

    QList<Word> words;

private:
    QTransform m_transform;
};

/// What is painted on it is only noted.
class NotingDevice : public QPaintDevice
{
public:
    explicit NotingDevice(const QSize &size)
        : m_size(size)
    {
    }
    QPaintEngine *paintEngine() const override { return &engine; }
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

    mutable NotingEngine engine;

private:
    QSize m_size;
};

/// Words that the painter got one by one, put together where they stand on one baseline side by side.
QJsonArray linesOf(QList<Word> words);

} // namespace lucentra
