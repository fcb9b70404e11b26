#include "LaunchAtLogin.h"

#include "LoginItem.h"
#include "MainQueue.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

LaunchAtLogin::LaunchAtLogin(LoginItem &item, MainQueue &mainQueue, DiagnosticLine diagnostics)
    : m_item(item)
    , m_mainQueue(mainQueue)
    , m_diagnostics(std::move(diagnostics))
{
}

bool LaunchAtLogin::isEnabled() const
{
    return m_item.isEnabled();
}

void LaunchAtLogin::setEnabled(bool enabled, std::function<void(bool isEnabled)> correct)
{
    const auto changed = m_item.setEnabled(enabled);
    if (changed)
        return;
    m_diagnostics(u"SMAppService failed: "_s + changed.error().description);
    m_mainQueue.post([&item = m_item, correct = std::move(correct)] { correct(item.isEnabled()); });
}

} // namespace lucentra
