#include "X11ScreenStream.h"

#include "MainQueue.h"

#include <QPainter>

#include <algorithm>
#include <cstring>
#include <utility>

namespace lucentra {

namespace {

/// A picture of the whole area around the part of it that a display shows; the rest is transparent. The rectangles are
/// in the same space.
QImage completed(const QImage &captured, const ScreenRect &visible, const ScreenRect &area)
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

/// The part of `damage` in which two pictures differ. Windows report more than they have changed, often all of
/// themselves. Everything if there was no picture of this kind before.
QRect changedPart(const QImage &before, const QImage &now, const QRect &damage)
{
    if (before.size() != now.size() || before.format() != now.format() || now.depth() != 32)
        return now.rect();
    const QRect whole = damage & now.rect();
    int left = whole.right() + 1;
    int right = whole.left() - 1;
    int top = whole.bottom() + 1;
    int bottom = whole.top() - 1;
    for (int y = whole.top(); y <= whole.bottom(); ++y) {
        const auto *a = reinterpret_cast<const QRgb *>(before.constScanLine(y));
        const auto *b = reinterpret_cast<const QRgb *>(now.constScanLine(y));
        if (std::memcmp(a + whole.left(), b + whole.left(), size_t(whole.width()) * sizeof(QRgb)) == 0)
            continue;
        top = std::min(top, y);
        bottom = y;
        left = int(std::mismatch(a + whole.left(), a + left, b + whole.left()).first - a);
        int last = whole.right();
        while (last > right && a[last] == b[last])
            --last;
        right = last;
    }
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace

X11ScreenStream::X11ScreenStream(Source source, MainQueue &mainQueue, Scheduler &scheduler)
    : m_source(std::move(source))
    , m_mainQueue(mainQueue)
    , m_scheduler(scheduler)
{
    m_worker.setMaxThreadCount(1);
}

void X11ScreenStream::follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame)
{
    m_area = area;
    m_frame = std::move(frame);
    m_damage = {};
    m_worker.start([this] { m_latest = {}; });
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
    const ScreenRect visible(display.intersects(m_area) ? display & m_area : m_area);
    // The worker ends before the stream does.
    m_worker.start([this, alive = QPointer<QObject>(&m_alive), area = m_area, visible,
                    damage = std::exchange(m_damage, QRect())] {
        const QImage picture = completed(m_source.capture(visible), visible, area);
        const QRect changed = changedPart(m_latest, picture, damage);
        m_latest = picture;
        m_mainQueue.post(alive, [this, frame = ScreenFrame{picture, changed}] {
            if (!m_area.isEmpty() && (frame.picture.isNull() || !frame.damage.isEmpty()))
                m_frame(frame);
            rest();
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
