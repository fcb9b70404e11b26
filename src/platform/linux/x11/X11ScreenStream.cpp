#include "X11ScreenStream.h"

#include "MainQueue.h"

#include <QPainter>

#include <utility>

namespace lucentra {

namespace {

/// Larger than any picture.
constexpr QRect everything(0, 0, 1 << 20, 1 << 20);

/// A picture of the whole area around the part of it that a display shows; the rest is transparent. The rectangles are
/// in the same space.
QImage completed(const QImage &captured, const QRectF &visible, const QRectF &area)
{
    if (captured.isNull() || visible == area)
        return captured;
    const double scale = captured.width() / visible.width();
    QImage whole((area.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.drawImage((visible.topLeft() - area.topLeft()) * scale, captured);
    return whole;
}

} // namespace

X11ScreenStream::X11ScreenStream(Source source, MainQueue &mainQueue, Scheduler &scheduler)
    : m_source(std::move(source))
    , m_mainQueue(mainQueue)
    , m_scheduler(scheduler)
    , m_self(std::make_shared<X11ScreenStream *>(this))
{
    m_worker.setMaxThreadCount(1);
}

void X11ScreenStream::follow(const QRectF &area, std::function<void(const ScreenFrame &)> frame)
{
    m_area = area;
    m_frame = std::move(frame);
    m_damage = everything;
    m_source.watch(area, [this](const QRect &damage) {
        m_damage |= damage;
        renew();
    });
    renew();
}

void X11ScreenStream::renew()
{
    if (m_area.isEmpty())
        return;
    if (m_isBusy) {
        m_isStale = true;
        return;
    }
    m_isBusy = true;
    m_isStale = false;
    const QRectF display = m_source.displayAt(m_area.center());
    const QRectF visible = display.intersects(m_area) ? display & m_area : m_area;
    m_worker.start([weak = std::weak_ptr(m_self), area = m_area, visible, damage = std::exchange(m_damage, QRect()),
                    &source = m_source, &queue = m_mainQueue] {
        const QImage picture = completed(source.capture(visible), visible, area);
        queue.post([weak, frame = ScreenFrame{picture, damage & picture.rect()}] {
            const auto self = weak.lock();
            if (!self)
                return;
            if (!(*self)->m_area.isEmpty())
                (*self)->m_frame(frame);
            (*self)->rest();
        });
    });
}

void X11ScreenStream::rest()
{
    m_rest = m_scheduler.after(m_interval, [this] {
        m_isBusy = false;
        if (m_area.isEmpty())
            return;
        m_source.rearm();
        if (m_isStale)
            renew();
    });
}

} // namespace lucentra
