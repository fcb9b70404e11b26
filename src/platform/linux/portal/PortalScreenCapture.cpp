#include "PortalScreenCapture.h"

#include "InstallCommand.h"
#include "PipeWireFrames.h"
#include "ScreenCastPortal.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

// Codes of failures besides those of `ScreenCastProblem`.
constexpr int notAskedYet = -1;
constexpr int otherMonitor = -2;

/// Longest wait for the first frame of a share.
constexpr auto firstFramePatience = 5s;
/// Longest wait for the frame without the pane. Its disappearance is a change of the screen, so a frame comes soon.
constexpr auto frameWithoutPanePatience = 2s;
/// A part of a display in the pixels of a picture of the whole display.
QRect pixelsOf(const ScreenRect &area, const X11Display &display, const QSize &picture)
{
    const QRectF frame = display.frame();
    const double horizontal = picture.width() / frame.width();
    const double vertical = picture.height() / frame.height();
    const QPointF corner = area.topLeft() - frame.topLeft();
    return {qRound(corner.x() * horizontal), qRound(corner.y() * vertical),
            std::max(1, int(std::ceil(area.width() * horizontal))),
            std::max(1, int(std::ceil(area.height() * vertical)))};
}

QRect nativePixelsOf(const ScreenRect &area, const X11Display &display)
{
    const QPointF corner = display.nativeFrame.topLeft();
    return QRectF((area.topLeft() - corner) * display.scale + corner, area.size() * display.scale).toAlignedRect();
}

} // namespace

/// What `cancel` ends.
class PortalScreenCapture::Running
{
public:
    explicit Running(PortalScreenCapture &owner)
        : m_owner(owner)
    {
        const std::lock_guard lock(m_owner.m_runningMutex);
        m_owner.m_running = this;
    }
    ~Running()
    {
        const std::lock_guard lock(m_owner.m_runningMutex);
        m_owner.m_running = nullptr;
    }
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;

    /// Connects to a monitor of the share.
    PipeWireFrames &receive(int descriptor, quint32 node)
    {
        auto made = std::make_unique<PipeWireFrames>(descriptor, node);
        const std::lock_guard lock(m_owner.m_runningMutex);
        frames = std::move(made);
        return *frames;
    }

    ScreenCastPortal portal;
    std::unique_ptr<PipeWireFrames> frames;

private:
    PortalScreenCapture &m_owner;
};

QString missingSharingText(const std::function<QString(const QString &)> &localized)
{
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    const QString backEnd = desktop.contains(u"GNOME"_s) ? u"gnome"_s : desktop.contains(u"KDE"_s) ? u"kde"_s : u"wlr"_s;
    return localized(u"這個桌面不提供畫面分享。請安裝後重新登入：%@"_s)
        .replace(u"%@"_s,
                 installCommand({u"pipewire"_s, u"xdg-desktop-portal"_s, u"xdg-desktop-portal-"_s + backEnd}));
}

PortalScreenCapture::PortalScreenCapture(Pane pane, ScreenShareStore store,
                                         std::function<QString(const QString &)> localized)
    : m_pane(std::move(pane))
    , m_localized(std::move(localized))
    , m_shares(std::move(store))
{
}

bool PortalScreenCapture::isGranted() const
{
    const std::lock_guard lock(m_storeMutex);
    return !m_shares.isEmpty();
}

Result<CaptureSurroundings> PortalScreenCapture::surroundings(quint32 paneWindow)
{
    m_paneWindow = paneWindow;
    auto found = m_pane.surroundings(paneWindow);
    if (found) {
        const std::lock_guard lock(m_storeMutex);
        m_displays = found->displays;
    }
    return found;
}

void PortalScreenCapture::alsoTake(const ScreenRect &area, std::function<void(const QImage &)> taken)
{
    const std::lock_guard lock(m_runningMutex);
    m_alsoArea = area;
    m_alsoTaken = std::move(taken);
}

void PortalScreenCapture::cancel()
{
    const std::lock_guard lock(m_runningMutex);
    if (!m_running)
        return;
    m_running->portal.cancel();
    if (m_running->frames)
        m_running->frames->cancel();
}

tl::unexpected<Failure> PortalScreenCapture::failure(int code, const QString &key) const
{
    return tl::unexpected(
        Failure{.domain = screenAccessDomain.toString(), .code = code, .description = m_localized(key)});
}

Result<QImage> PortalScreenCapture::capture(const ScreenRect &area)
{
    const std::lock_guard lock(m_capturing);
    Running running(*this);
    return captureFrom(running, area);
}

Result<QImage> PortalScreenCapture::captureFrom(Running &running, const ScreenRect &area)
{
    const X11Display display = m_pane.displayAt(area.center());
    QString token;
    bool isOnlyDisplay = true;
    {
        const std::lock_guard lock(m_storeMutex);
        QList<QRect> others;
        for (const QRectF &frame : std::as_const(m_displays)) {
            if (const QRect other = m_pane.displayAt(frame.center()).nativeFrame;
                !other.isEmpty() && other != display.nativeFrame)
                others.append(other);
        }
        isOnlyDisplay = others.isEmpty();
        token = m_shares.tokenFor(display.nativeFrame, others);
    }
    const auto isWanted = [&](const SharedMonitor &monitor) {
        return isOnlyDisplay || isSameMonitor(monitor, display.nativeFrame);
    };
    const bool mayAsk = m_mayAsk.exchange(false);
    const QString refused = u"沒有分享螢幕，Lucentra 就看不到翻譯板下方的文字。按「分享畫面…」後，桌面會再問一次。"_s;
    const QString explanation = u"為了讀取翻譯板下方的文字，桌面接下來會請您分享畫面；請選擇翻譯板所在的螢幕。"_s;
    const auto noService = [this] {
        return tl::unexpected(
            Failure{.domain = screenServiceDomain.toString(), .description = missingSharingText(m_localized)});
    };
    if (token.isEmpty() && !mayAsk && !running.portal.isOffered())
        return noService();
    if (token.isEmpty() && !mayAsk)
        return m_wasRefused ? failure(int(ScreenCastProblem::Refused), refused) : failure(notAskedYet, explanation);

    std::shared_ptr<void> room;
    const auto makeRoom = [&] { room = m_pane.makeRoom(m_paneWindow); };
    if (token.isEmpty())
        makeRoom();
    // The desktop also asks if the token's monitor isn't there any more.
    const auto share = running.portal.start(token, m_pane.portalName(m_paneWindow),
                                            token.isEmpty() ? std::function<void()>() : makeRoom);
    room.reset();
    if (!share) {
        switch (share.error()) {
        case ScreenCastProblem::Refused:
            m_wasRefused = true;
            if (!token.isEmpty()) {
                const std::lock_guard lock(m_storeMutex);
                m_shares.replace(token, {}, {});
            }
            return failure(int(share.error()), refused);
        case ScreenCastProblem::NoService:
            return noService();
        case ScreenCastProblem::NoAnswer:
            return failure(int(share.error()), u"桌面沒有回答分享畫面的請求。請再試一次；如果仍然沒有反應，請重新登入。"_s);
        case ScreenCastProblem::Failed:
        case ScreenCastProblem::Cancelled:
            break;
        }
        return failure(int(share.error()), u"畫面分享中斷了。請再試一次。"_s);
    }
    {
        const std::lock_guard lock(m_storeMutex);
        m_shares.replace(token, share->nextToken, share->monitors);
    }
    m_wasRefused = false;
    const auto monitor = std::find_if(share->monitors.begin(), share->monitors.end(), isWanted);
    if (monitor == share->monitors.end() && !token.isEmpty()) // the monitors have changed since they were shared
        return failure(notAskedYet, explanation);
    if (monitor == share->monitors.end())
        return failure(otherMonitor, u"分享的不是翻譯板所在的螢幕。請再試一次，並選擇翻譯板所在的螢幕。"_s);

    const int descriptor = running.portal.openPipeWire();
    const auto interrupted = failure(int(ScreenCastProblem::Failed), u"畫面分享中斷了。請再試一次。"_s);
    if (descriptor < 0)
        return interrupted;
    PipeWireFrames &frames = running.receive(descriptor, monitor->node);
    if (frames.waitForFrame(PipeWireFrames::Clock::time_point::min(), firstFramePatience) != PipeWireFrames::Wait::Arrived)
        return interrupted;
    Hidden hidden = m_pane.hide(nativePixelsOf(area, display));
    auto wait = frames.waitForFrame(hidden.since, frameWithoutPanePatience);
    // If the screen is still, the last frame shows it, provided that it was drawn after the change.
    if (wait == PipeWireFrames::Wait::TimedOut)
        wait = frames.waitForFrame(hidden.begun, 0s);
    hidden.shownAgain.reset();
    if (wait == PipeWireFrames::Wait::Broken || running.portal.hasEnded())
        return interrupted;
    if (wait == PipeWireFrames::Wait::TimedOut)
        return QImage();

    ScreenRect alsoArea;
    std::function<void(const QImage &)> alsoTaken;
    {
        const std::lock_guard lock(m_runningMutex);
        alsoArea = m_alsoArea;
        alsoTaken = m_alsoTaken;
    }
    if (!alsoArea.isEmpty() && display.frame().contains(alsoArea))
        alsoTaken(frames.part(pixelsOf(alsoArea, display, frames.size()))
                      .scaled((alsoArea.size() * display.scale).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return frames.part(pixelsOf(area, display, frames.size()));
}

} // namespace lucentra
