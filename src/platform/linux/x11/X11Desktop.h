#pragma once

#include "Desktop.h"
#include "X11ChangeMonitor.h"
#include "X11CompositingMonitor.h"
#include "X11GlobalHotkeys.h"
#include "X11PaneWindowHints.h"
#include "X11ScreenCapture.h"
#include "X11ScreenStream.h"

#include <QObject>

class QScreen;

namespace lucentra {

class MainQueue;
class SessionBus;

/// An X11 desktop. Needs the application's connection to the X server.
class X11Desktop : public QObject, public Desktop
{
public:
    /// `localized` looks up a text key in the interface language.
    X11Desktop(Scheduler &scheduler, SessionBus &bus, MainQueue &mainQueue,
               const std::function<QString(const QString &)> &localized);

    ScreenCapture &capture() override { return m_capture; }
    ScreenStream &stream() override { return m_stream; }
    GlobalHotkeys &hotkeys() override { return m_hotkeys; }
    PaneWindowHints &windows() override { return m_windows; }
    bool isComposited() const override { return m_compositing.isComposited(); }
    void setCompositedHandler(std::function<void(bool)> changed) override
    {
        m_compositing.onChanged = std::move(changed);
    }
    /// Of either kind: one on the bus, or one that embeds windows.
    bool hasTray() const override;

    // For a desktop whose windows are this one's, but whose captures aren't.

    X11Display displayAt(const QPointF &point) const { return m_capture.displayAt(point); }
    /// The resource ids of the toolkit's connection.
    static X11ResourceRange ownResources();

private:
    X11ScreenStream::Source streamSource();
    void watch(QScreen *screen);
    void updateDisplays();

    SessionBus &m_bus;
    X11ScreenCapture m_capture;
    X11ChangeMonitor m_changes;
    X11ScreenStream m_stream;
    X11CompositingMonitor m_compositing;
    X11PaneWindowHints m_windows;
    X11GlobalHotkeys m_hotkeys;
};

} // namespace lucentra
