#pragma once

#include "APIKeys.h"
#include "SettingsServices.h"

#include <QPointer>

#include <memory>

class QMainWindow;

namespace lucentra {

class SettingsView;

/// The settings window. It stays when it is closed, but its form goes, and with it the keys that it showed; the next
/// time it is shown the form is made anew from what is stored.
class SettingsWindowController : public QObject
{
public:
    explicit SettingsWindowController(SettingsServices services);
    ~SettingsWindowController() override;

    /// Brings the window to the front, with the tab that was the last one.
    void showWindow();
    /// Gives the window its title in the interface language; the form looks after itself.
    void refreshTitle();

    QMainWindow &window() { return *m_window; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeView();
    void forgetView();
    void placeAtFirst();

    const SettingsServices m_services;
    APIKeys m_keys;
    std::unique_ptr<QMainWindow> m_window;
    QPointer<SettingsView> m_view; ///< belongs to the window; empty while that is closed
    int m_tab = 0;
    bool m_hasPlace = false;
};

} // namespace lucentra
