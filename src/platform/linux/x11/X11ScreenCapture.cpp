#include "X11ScreenCapture.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The display that holds most of a native rectangle; the first one where none does.
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

Failure noServer()
{
    return {.domain = u"X11"_s, .code = 1, .description = QString()};
}

} // namespace

X11ScreenCapture::X11ScreenCapture(X11ResourceRange ours)
    : m_ours(ours)
{
    m_worker.setMaxThreadCount(1);
    m_worker.setExpiryTimeout(-1);
}

X11ScreenCapture::~X11ScreenCapture()
{
    m_worker.waitForDone();
}

void X11ScreenCapture::setDisplays(QList<X11Display> displays)
{
    const std::lock_guard lock(m_mutex);
    m_displays = std::move(displays);
}

QList<X11Display> X11ScreenCapture::displays() const
{
    const std::lock_guard lock(m_mutex);
    return m_displays;
}

X11Composer &X11ScreenCapture::composer()
{
    if (!m_composer)
        m_composer = std::make_unique<X11Composer>(m_ours);
    return *m_composer;
}

void X11ScreenCapture::setPaneShown(bool shown)
{
    m_worker.start([this, shown] { composer().setRedirecting(shown); });
}

void X11ScreenCapture::shareableContent(bool, bool, std::function<void(Result<ShareableContent>)> completion)
{
    // Desktop windows count and hidden ones don't, whatever is asked: a hidden window has no place on the screen here.
    m_worker.start([this, completion = std::move(completion)] {
        if (!composer().isUsable()) {
            completion(tl::unexpected(noServer()));
            return;
        }
        ShareableContent content;
        const QList<X11Display> all = displays();
        for (qsizetype i = 0; i < all.size(); ++i)
            content.displays.append({.identifier = quint32(i), .frame = all[i].frame()});
        for (const X11WindowPlace &place : composer().viewableWindows()) {
            if (const X11Display *display = displayOf(all, place.frame))
                content.windows.append({.identifier = place.window,
                                        .frame = QRectF(display->toPoints(place.frame.topLeft()),
                                                        QSizeF(place.frame.size()) / display->scale)});
        }
        content.applications.append(ShareableApplication{QCoreApplication::applicationPid()});
        completion(content);
    });
}

double X11ScreenCapture::pointPixelScale(const ContentFilter &filter) const
{
    for (const X11Display &display : displays()) {
        if (display.frame() == filter.display.frame)
            return display.scale;
    }
    return 1;
}

void X11ScreenCapture::screenshot(const ContentFilter &filter, const StreamConfiguration &configuration,
                                  std::function<void(Result<QImage>)> completion)
{
    const double scale = pointPixelScale(filter);
    const QPointF corner = configuration.sourceRect.topLeft() * scale + filter.display.frame.topLeft();
    // A fraction of a pixel at the far edge is inside: the configured size is rounded up.
    const QRect native(qRound(corner.x()), qRound(corner.y()), configuration.width, configuration.height);
    m_worker.start([this, native, completion = std::move(completion)] {
        if (!composer().isUsable())
            completion(tl::unexpected(noServer()));
        else if (m_nothingBeneath && !composer().hasForeignWindows(native))
            completion(tl::unexpected(Failure{.domain = u"X11"_s, .code = 2, .description = m_nothingBeneath()}));
        else
            completion(composer().compose(native));
    });
}

} // namespace lucentra
