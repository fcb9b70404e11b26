#include "X11ScreenCapture.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The display with the largest part of a native rectangle, or the first one.
const X11Display *displayOf(const QList<X11Display> &displays, const QRect &native)
{
    const X11Display *best = displays.isEmpty() ? nullptr : &displays.first();
    qint64 bestArea = 0;
    for (const X11Display &display : displays) {
        const QRect shared = display.nativeFrame & native;
        const qint64 area = shared.isEmpty() ? 0 : qint64(shared.width()) * shared.height();
        if (area > bestArea) {
            bestArea = area;
            best = &display;
        }
    }
    return best;
}

} // namespace

X11ScreenCapture::X11ScreenCapture(X11ResourceRange ours)
    : m_ours(ours)
{
    m_worker.setMaxThreadCount(1);
}

void X11ScreenCapture::setDisplays(QList<X11Display> displays)
{
    const std::lock_guard lock(m_displaysMutex);
    m_displays = std::move(displays);
}

QList<X11Display> X11ScreenCapture::displays() const
{
    const std::lock_guard lock(m_displaysMutex);
    return m_displays;
}

X11Display X11ScreenCapture::displayAt(const QPointF &point) const
{
    const QList<X11Display> all = displays();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const X11Display &display) { return display.frame().contains(point); });
    return found == all.end() ? X11Display() : *found;
}

X11Composer &X11ScreenCapture::preparedComposer()
{
    if (!m_composer)
        m_composer = std::make_unique<X11Composer>(m_ours);
    m_composer->setRedirecting(m_isPaneShown);
    return *m_composer;
}

Failure X11ScreenCapture::unusable() const
{
    const QString names = m_composer->missing().join(u", "_s);
    return {.domain = u"X11"_s, .code = 1, .description = m_missing ? m_missing(names) : names};
}

void X11ScreenCapture::setPaneShown(bool shown)
{
    if (m_isPaneShown.exchange(shown) == shown)
        return;
    m_worker.start([this] {
        const std::lock_guard lock(m_composing);
        preparedComposer();
    });
}

Result<CaptureSurroundings> X11ScreenCapture::surroundings(quint32 paneWindow)
{
    const std::lock_guard lock(m_composing);
    X11Composer &composer = preparedComposer();
    if (!composer.isUsable())
        return tl::unexpected(unusable());
    CaptureSurroundings surroundings;
    const QList<X11Display> all = displays();
    for (const X11Display &display : all)
        surroundings.displays.append(display.frame());
    for (const X11WindowPlace &place : composer.viewableWindows()) {
        const X11Display *display = place.window == paneWindow ? displayOf(all, place.frame) : nullptr;
        if (display)
            surroundings.paneWindow =
                ScreenRect(display->toPoints(place.frame.topLeft()), QSizeF(place.frame.size()) / display->scale);
    }
    return surroundings;
}

Result<QImage> X11ScreenCapture::capture(const ScreenRect &area)
{
    const X11Display display = displayAt(area.center());
    const double scale = std::max(1.0, display.scale);
    const QPointF corner = (area.topLeft() - display.nativeFrame.topLeft()) * scale + display.nativeFrame.topLeft();
    // A fraction of a pixel at the far edge is inside, so sizes are rounded up.
    const QRect native(qRound(corner.x()), qRound(corner.y()), std::max(1, int(std::ceil(scale * area.width()))),
                       std::max(1, int(std::ceil(scale * area.height()))));
    const std::lock_guard lock(m_composing);
    X11Composer &composer = preparedComposer();
    if (!composer.isUsable())
        return tl::unexpected(unusable());
    return composer.compose(native);
}

} // namespace lucentra
