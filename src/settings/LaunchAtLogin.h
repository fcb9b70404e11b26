#pragma once

#include "DiagnosticLine.h"

#include <functional>

namespace lucentra {

class LoginItem;
class MainQueue;

/// Switches the start at login on and off for a toggle of the settings window. The desktop's own record is the only
/// one; no setting is stored. Main thread only.
class LaunchAtLogin
{
public:
    /// What is referred to must outlive it.
    LaunchAtLogin(LoginItem &item, MainQueue &mainQueue, DiagnosticLine diagnostics);

    bool isEnabled() const;
    /// Where that fails the log has a line, and `correct` is called later with the state that is really in force.
    void setEnabled(bool enabled, std::function<void(bool isEnabled)> correct);

private:
    LoginItem &m_item;
    MainQueue &m_mainQueue;
    const DiagnosticLine m_diagnostics;
};

} // namespace lucentra
