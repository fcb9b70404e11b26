#pragma once

#include "APIKeys.h"
#include "SettingsServices.h"

#include <QPointer>

#include <memory>

class QMainWindow;

namespace lucentra {

class SettingsView;

/// The settings window. Closing it hides it and destroys its form, and with that the keys that the form showed. Showing
/// it makes a new form from the stored values.
class SettingsWindowController : public QObject
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
    QPointer<SettingsView> m_view; ///< belongs to the window; null while that is closed
    int m_tab = 0;
    bool m_hasPlace = false;
};

} // namespace lucentra
