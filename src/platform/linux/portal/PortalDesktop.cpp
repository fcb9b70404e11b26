#include "PortalDesktop.h"

#include "X11WindowVeil.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

PortalScreenStream::PortalScreenStream(PortalScreenCapture &capture, MainQueue &mainQueue)
    : m_capture(capture)
    , m_mainQueue(mainQueue)
{
}

void PortalScreenStream::follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame)
{
    if (area.isEmpty())
        m_capture.cancel();
    m_frame = std::move(frame);
    if (std::exchange(m_area, area) == area)
        return;
    m_capture.alsoTake(area, [this, alive = QPointer<QObject>(&m_alive), area,
                              &queue = m_mainQueue](const QImage &picture) {
        queue.post(alive, [this, area, picture] {
            if (m_area == area && m_frame)
                m_frame({picture, picture.rect()});
        });
    });
    if (!area.isEmpty())
        m_frame({});
}

void PortalPaneHints::setHoldHandler(const QWindow &window, std::function<void(bool)> handler)
{
    X11PaneWindowHints::setHoldHandler(window, handler);
    m_moves.watch(window, [this, handler](bool isHeld) {
        if (!isPointerButtonDown()) // a drag of the program's own
            handler(isHeld);
    });
}

PortalDesktop::PortalDesktop(Scheduler &scheduler, SessionBus &bus, MainQueue &mainQueue, const ScreenShareStore &store,
                             const std::function<QString(const QString &)> &localized)
    : m_windows(scheduler, bus, mainQueue, localized)
    , m_hotkeys(bus, &m_windows.hotkeys(), localized)
    , m_capture(pane(), store, localized)
    , m_stream(m_capture, mainQueue)
{
}

PortalScreenCapture::Pane PortalDesktop::pane()
{
    return {.surroundings = [this](quint32 window) { return m_windows.capture().surroundings(window); },
            .displayAt = [this](const QPointF &point) { return m_windows.displayAt(point); },
            .hide =
                [ours = X11Desktop::ownResources()](const QRect &area) {
                    const auto veil = std::make_shared<X11WindowVeil>(ours, area);
                    return PortalScreenCapture::Hidden{veil->begun(), veil->since(), veil};
                },
            .makeRoom = [](quint32 window) -> std::shared_ptr<void> {
                return std::make_shared<X11WindowsLowered>(window);
            },
            .portalName = [](quint32 window) { return u"x11:"_s + QString::number(window, 16); }};
}

} // namespace lucentra
