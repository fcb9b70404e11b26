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

/// Called before each request, on the request's worker. Throws where it may not be made any more.
using BeforeRequest = std::function<void()>;

/// Translates texts on this machine: calls back once, on any thread, with one text a source text, or with nothing.
/// The last function says whether the texts are still wanted; it may be called on any thread, and may be unset.
using OnDeviceTranslation = std::function<void(const QStringList &texts, const QString &target,
                                               std::function<void(std::optional<OnDeviceTranslations>)> completion,
                                               std::function<bool()> isWanted)>;

/// What the manager can translate with. Except for the on-device one, every client runs on a worker, may block, asks
/// before each of its requests, returns one string a block in their order, and throws `TranslationError`.
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

    /// Called where a request is made; an unset one counts as having no result.
    OnDeviceTranslation onDevice;
    /// Whether this system is recent enough for on-device translation; it is where unset.
    std::function<bool()> supportsOnDevice;

    /// Ends every request under way at once.
    std::function<void()> cancelAll;
};

/// The clients of the remote services; the on-device members are unset. What is given must outlive them.
TranslationClients remoteClients(HttpSession &http, const LocalizationManager &texts, const ServiceHosts &hosts = {});

} // namespace lucentra
