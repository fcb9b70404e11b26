#pragma once

#include "Callback.h"

#include <functional>

namespace lucentra {

class LoginItem;
class MainQueue;

/// Switches the start at login on and off for a toggle in the settings window. Only the desktop stores the state.
class LaunchAtLogin
{
public:
    LaunchAtLogin(LoginItem &item, MainQueue &mainQueue, DiagnosticLine diagnostics);

    bool isEnabled() const;
    /// On failure logs a line and calls `correct` later with the actual state.
    void setEnabled(bool enabled, std::function<void(bool isEnabled)> correct);

private:
    LoginItem &m_item;
    MainQueue &m_mainQueue;
    const DiagnosticLine m_diagnostics;
};

} // namespace lucentra
