#include "LayerScreenCapture.h"

#include "KWinScreenshot.h"
#include "LayerPaneHints.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTransform>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <utility>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

/// Longest wait for the main thread.
constexpr auto mainPatience = 1s;

/// By how many degrees a picture of an output's own pixels must be turned to be upright.
int rotationOf(const QScreen &screen)
{
    switch (screen.orientation()) {
    case Qt::PortraitOrientation:
        return 90;
    case Qt::InvertedLandscapeOrientation:
        return 180;
    case Qt::InvertedPortraitOrientation:
        return 270;
    default:
        return 0;
    }
}

/// Runs a task on the main thread and waits for it. Returns false if it takes too long to begin; it isn't run then.
bool runOnMain(QObject &context, std::function<void()> task)
{
    struct Turn
    {
        std::mutex mutex;
        std::condition_variable ended;
        bool isAbandoned = false;
        bool isDone = false;
    };
    const auto turn = std::make_shared<Turn>();
    QMetaObject::invokeMethod(
        &context,
        [turn, task = std::move(task)] {
            const std::lock_guard lock(turn->mutex);
            if (turn->isAbandoned)
                return;
            task();
            turn->isDone = true;
            turn->ended.notify_all();
        },
        Qt::QueuedConnection);
    std::unique_lock lock(turn->mutex);
    turn->isAbandoned = !turn->ended.wait_for(lock, mainPatience, [&] { return turn->isDone; });
    return turn->isDone;
}

} // namespace

LayerScreenCapture::LayerScreenCapture(WaylandConnection &connection, LayerPaneHints &pane)
    : m_pane(pane)
    , m_screencopy(connection.queue().display())
{
    const auto watch = [this](QScreen *screen) {
        connect(screen, &QScreen::geometryChanged, this, &LayerScreenCapture::updateDisplays);
        updateDisplays();
    };
    connect(qGuiApp, &QGuiApplication::screenAdded, this, watch);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &LayerScreenCapture::updateDisplays);
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
}

void LayerScreenCapture::updateDisplays()
{
    const std::lock_guard lock(m_displaysMutex);
    m_displays.clear();
    for (const QScreen *screen : QGuiApplication::screens())
        m_displays.append(ScreenRect(screen->geometry()));
}

Result<CaptureSurroundings> LayerScreenCapture::surroundings(quint32)
{
    CaptureSurroundings surroundings;
    if (const auto frame = m_pane.paneFrame())
        surroundings.paneWindow = ScreenRect(*frame);
    const std::lock_guard lock(m_displaysMutex);
    surroundings.displays = m_displays;
    return surroundings;
}

Result<QImage> LayerScreenCapture::capture(const ScreenRect &area)
{
    const std::lock_guard lock(m_capturing);
    const QRect whole = area.toAlignedRect();
    const QImage picture = m_screencopy.isOffered() ? screencopyPicture(whole) : kwinPicture(whole);
    if (!picture.isNull())
        QMetaObject::invokeMethod(this, [this, whole, picture] { report(whole, picture); }, Qt::QueuedConnection);
    return picture;
}

void LayerScreenCapture::reveal()
{
    QMetaObject::invokeMethod(this, [this] { m_pane.reveal(); }, Qt::QueuedConnection);
}

QImage LayerScreenCapture::screencopyPicture(const QRect &area)
{
    bool hasStarted = false;
    int rotation = 0;
    QRect display;
    runOnMain(*this, [&] {
        QScreen *screen = QGuiApplication::screenAt(area.center());
        wl_output *output = screen ? WaylandConnection::outputOf(*screen) : nullptr;
        if (!output)
            return;
        hasStarted = true;
        rotation = rotationOf(*screen);
        display = screen->geometry();
        // Not all compositors find the right part of a rotated output.
        m_screencopy.start(output, (rotation == 0 ? area : display).translated(-display.topLeft()));
    });
    if (!hasStarted || !m_screencopy.prepare())
        return {};
    bool isConcealed = false;
    const bool isAsked = runOnMain(*this, [&] {
        // Outputs without a plane for the pointer draw it into the picture.
        isConcealed = m_pane.conceal(LayerPaneHints::Concealment::PaneAndPointer);
        m_screencopy.copy();
    });
    const QImage picture = isAsked ? m_screencopy.wait() : QImage();
    if (isConcealed)
        reveal();
    if (rotation == 0 || picture.isNull())
        return picture;
    const QImage upright = picture.transformed(QTransform().rotate(rotation));
    const double scale = double(upright.width()) / display.width();
    return upright.copy(
        QRectF(QPointF(area.topLeft() - display.topLeft()) * scale, QSizeF(area.size()) * scale).toAlignedRect());
}

QImage LayerScreenCapture::kwinPicture(const QRect &area)
{
    bool isConcealed = false;
    if (!runOnMain(*this, [&] { isConcealed = m_pane.conceal(LayerPaneHints::Concealment::Pane); }))
        return {};
    m_screencopy.roundtrip(); // the bus is another way to KWin: the pane must be invisible before the question arrives
    return takeKWinScreenshot(area, [&] {
        if (isConcealed)
            reveal();
    });
}

void LayerScreenCapture::follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame)
{
    m_frame = std::move(frame);
    if (std::exchange(m_followed, area) != area && !area.isEmpty())
        m_frame({});
}

void LayerScreenCapture::report(const QRect &area, const QImage &picture)
{
    // A capture leaves out the pane's border.
    if (m_followed.isEmpty() || !m_followed.contains(area))
        return;
    const double scale = double(picture.width()) / area.width();
    QImage whole((m_followed.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.drawImage((area.topLeft() - m_followed.topLeft()) * scale, picture);
    painter.end();
    m_frame({.picture = whole, .damage = whole.rect()});
}

} // namespace lucentra
