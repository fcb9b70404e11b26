#include "BackdropRenewal.h"

#include "MainQueue.h"
#include "ScreenChangeMonitor.h"

#include <QPainter>

#include <utility>

namespace lucentra {

namespace {

/// A picture of the whole pane around the part of it that a display shows; what no display shows stays clear. The
/// rectangles are in the same space.
QImage completed(const QImage &captured, const QRectF &visible, const QRectF &glass)
{
    if (captured.isNull() || visible == glass)
        return captured;
    const double scale = captured.width() / visible.width();
    QImage whole((glass.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.drawImage((visible.topLeft() - glass.topLeft()) * scale, captured);
    return whole;
}

} // namespace

BackdropRenewal::BackdropRenewal(Pane pane, ScreenCapture &capture, ScreenChangeMonitor &changes,
                                 const LocalizationManager &texts, QThreadPool &worker, MainQueue &mainQueue,
                                 Scheduler &scheduler)
    : m_pane(std::move(pane))
    , m_capture(capture)
    , m_changes(changes)
    , m_texts(texts)
    , m_worker(worker)
    , m_mainQueue(mainQueue)
    , m_scheduler(scheduler)
    , m_self(std::make_shared<BackdropRenewal *>(this))
{
}

BackdropRenewal::~BackdropRenewal()
{
    m_worker.waitForDone(); // it uses what was given
}

void BackdropRenewal::start()
{
    m_isRunning = true;
    watchArea();
    renew();
}

void BackdropRenewal::stop()
{
    m_isRunning = false;
    m_changes.watch({}, {});
}

void BackdropRenewal::paneMoved()
{
    if (!m_isRunning)
        return;
    watchArea();
    renew();
}

void BackdropRenewal::watchArea()
{
    m_changes.watch(m_pane.area().glass, [this] { renew(); });
}

void BackdropRenewal::renew()
{
    if (!m_isRunning)
        return;
    if (m_isBusy) {
        m_isStale = true;
        return;
    }
    m_isBusy = true;
    m_isStale = false;
    GlassArea area = m_pane.area();
    // The glass reaches to the pane's edge, where a capture for reading leaves the border out. And a pane that
    // overhangs its display's edge has glass all the same, where a capture for reading must be whole.
    const QRectF glass = m_pane.area().glass;
    const QRectF display = m_pane.display();
    const QRectF visible = display.intersects(glass) ? display & glass : glass;
    area.glass = visible.adjusted(-captureInset, -captureInset, captureInset, captureInset);
    m_worker.start([weak = std::weak_ptr(m_self), area, visible, glass, &capture = m_capture, &texts = m_texts,
                    &queue = m_mainQueue] {
        const QImage picture = captureGlassArea(capture, area, texts).value_or(QImage());
        queue.post([weak, picture = completed(picture, visible, glass)] {
            const auto self = weak.lock();
            if (!self)
                return;
            if ((*self)->m_isRunning)
                (*self)->m_pane.showBeneath(picture);
            (*self)->rest();
        });
    });
}

void BackdropRenewal::rest()
{
    m_rest = m_scheduler.after(interval, [this] {
        m_isBusy = false;
        if (!m_isRunning)
            return;
        m_changes.rearm();
        if (m_isStale)
            renew();
    });
}

} // namespace lucentra
