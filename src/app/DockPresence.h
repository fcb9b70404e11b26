#pragma once

namespace lucentra {

class TransparentWindow;

/// Brings a changed "showInDock" into force at run time: the pane appears in the task bar, the pager and the window
/// switcher, or leaves them. The settings window, in which this is switched, stays in front and keeps the keys: it is
/// the visible window other than the pane that is named "settings" or has "Lucentra" in its title.
void applyDockPresence(TransparentWindow &pane, bool showInDock);

} // namespace lucentra
