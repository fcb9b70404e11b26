#pragma once

#include "LanguageModelProvider.h"
#include "OnDeviceTranslations.h"
#include "ServiceHosts.h"
#include "TextBlock.h"
#include "Translations.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lucentra {

class HttpSession;
class LocalizationManager;

/// Called before each request, on the request's worker. Throws if the request isn't allowed any more.
using BeforeRequest = std::function<void()>;

/// Translates texts on this computer. Completes once, on any thread, with the result or nullopt. Stops once `isWanted`,
/// which may be called on any thread and may be unset, returns false.
using OnDeviceTranslation = std::function<void(const QStringList &texts, const QString &target,
                                               std::function<void(std::optional<OnDeviceTranslations>)> completion,
                                               std::function<bool()> isWanted)>;

/// The clients of the manager. Except for the on-device one, each runs on a worker, may block, calls the
/// `BeforeRequest` before each request, returns one string per block in their order, and throws `TranslationError`.
struct TranslationClients
{
    using Blocks = QList<TextBlock>;

    template <typename Answer, typename... Values>
    using Client = std::function<Answer(const BeforeRequest &, const Values &...)>;

    Client<QStringList, Blocks, QString /*target*/> googleFree;
    Client<QStringList, Blocks, QString /*target*/, QString /*key*/> googleCloud;
    Client<QStringList, Blocks, QString /*key*/, QString /*region*/, QString /*target*/> microsoft;
    Client<QStringList, Blocks, QString /*key*/, QString /*target*/> deepL;
    Client<QStringList, QString /*key*/, Blocks, QString /*target*/> geminiBlocks;
    /// Its own failures are messages.
    Client<TextTranslation, QString /*key*/, QString /*text*/, QString /*target*/> geminiText;
    Client<QStringList, Blocks, QString /*target*/, LanguageModelProvider> modelBlocks;
    Client<QString, QString /*text*/, QString /*target*/, LanguageModelProvider> modelText;

    /// Called on the thread that requests the translation. If unset, there is no result.
    OnDeviceTranslation onDevice;
    /// Whether this system supports on-device translation; it does if this is unset.
    std::function<bool()> supportsOnDevice;

    /// Ends all running requests at once.
    std::function<void()> cancelAll;
};

/// The clients of the remote services. The on-device members are unset.
TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts = {});

} // namespace lucentra
