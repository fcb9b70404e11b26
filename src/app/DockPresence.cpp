#include "DockPresence.h"

#include "TransparentWindow.h"

#include <QApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QWidget *settingsWindow(const QWidget &pane)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const QWidget *window) {
        return window != &pane && window->isVisible() &&
               (window->windowTitle().contains(u"Lucentra"_s) || window->objectName() == "settings"_L1);
    });
    return found == windows.end() ? nullptr : *found;
}

} // namespace

void applyDockPresence(TransparentWindow &pane, bool showInDock)
{
    pane.updatePresence();
    QWidget *window = settingsWindow(pane);
    if (!window && showInDock && pane.isShown())
        window = &pane;
    if (!window)
        return;
    window->raise();
    window->activateWindow();
}

} // namespace lucentra
