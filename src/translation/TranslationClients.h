#pragma once

#include "OnDeviceTranslations.h"
#include "ServiceHosts.h"
#include "TranslationEngine.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace lucentra {

class HttpSession;
class LocalizationManager;

/// Called before each request, on the request's worker. Throws if the request isn't allowed any more.
using BeforeRequest = std::function<void()>;

/// The clients of the manager. They run on workers and may block.
struct TranslationClients
{
    /// Translates by a remote engine. Returns one string per text, in their order; throws `TranslationError`.
    std::function<QStringList(const EngineRequest &, const BeforeRequest &)> remote;
    /// Translates on this computer. Returns nullopt if that fails, or if this is unset. Stops once the given function,
    /// which may be unset, returns false.
    std::function<std::optional<OnDeviceTranslations>(const EngineRequest &, const std::function<bool()> &isWanted)>
        onDevice;
    /// Whether a text is a phrase whose translation into a language this computer knows; none is if this is unset.
    std::function<bool(const QString &text, const QString &target)> isPhrase;
    /// Whether this system supports on-device translation; it does if this is unset.
    std::function<bool()> supportsOnDevice;
    /// Ends all running requests at once, for good.
    std::function<void()> cancelAll;
};

/// The clients of the remote services. The on-device members are unset.
TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts = {});

} // namespace lucentra
