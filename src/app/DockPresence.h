#pragma once

namespace lucentra {

class TransparentWindow;

/// Applies a changed "showInDock" while the program runs: adds the pane to the task bar, the pager and the window
/// switcher, or removes it. The settings window, which has the switch, stays in front and keeps the focus: it is the
/// visible window other than the pane that is named "settings" or has "Lucentra" in its title.
void applyDockPresence(TransparentWindow &pane, bool showInDock);

} // namespace lucentra
