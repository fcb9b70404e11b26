#pragma once

#include "Desktop.h"
#include "DesktopHotkeys.h"
#include "LayerPaneHints.h"
#include "LayerScreenCapture.h"
#include "WaylandConnection.h"

namespace lucentra {

class SessionBus;

/// What a session's compositor offers for a pane that is a layer surface.
enum class LayerPaneOffer { None, PaneOnly, PaneAndCapture };
/// Doesn't need the application object; takes a few milliseconds.
LayerPaneOffer layerPaneOffer();
/// Chooses the toolkit's platform for `LayerDesktop`; to be called before the application object exists.
void prepareLayerPane();

/// A Wayland desktop whose compositor lets programs place surfaces above all windows: wlroots, KDE Plasma and others.
class LayerDesktop : public Desktop
{
public:
    /// `localized` looks up a text key in the interface language.
    LayerDesktop(SessionBus &bus, const std::function<QString(const QString &)> &localized);

    ScreenCapture &capture() override { return m_capture; }
    ScreenStream &stream() override { return m_capture; }
    GlobalHotkeys &hotkeys() override { return m_hotkeys; }
    PaneWindowHints &windows() override { return m_windows; }
    bool hasTray() const override;

private:
    SessionBus &m_bus;
    WaylandConnection m_connection;
    LayerPaneHints m_windows;
    LayerScreenCapture m_capture;
    DesktopHotkeys m_hotkeys;
};

} // namespace lucentra
