#pragma once

#include "APIKeys.h"
#include "SettingsServices.h"

#include <QMainWindow>
#include <QPointer>

namespace lucentra {

class SettingsView;

/// The settings window. Closing it hides it and destroys its form, and with that the keys that the form showed. Showing
/// it makes a new form from the stored values.
class SettingsWindowController : public QMainWindow
{
public:
    explicit SettingsWindowController(SettingsServices services);
    ~SettingsWindowController() override;

    /// Brings the window to the front, with the tab that was shown last.
    void showWindow();
    /// Goes to the translation models in the shown window.
    void showModels();
    /// Updates the window's title after a change of the interface language; the form updates itself.
    void refreshTitle();

protected:
    bool event(QEvent *event) override;

private:
    void forgetView();
    void placeAtFirst();

    const SettingsServices m_services;
    APIKeys m_keys;
    QPointer<SettingsView> m_view; ///< belongs to the window; null while that is closed
    int m_tab = 0;
    bool m_hasPlace = false;
};

} // namespace lucentra
