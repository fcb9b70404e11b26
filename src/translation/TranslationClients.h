#pragma once

#include "LanguageModelProvider.h"
#include "OnDeviceTranslations.h"
#include "ServiceHosts.h"
#include "TextBlock.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lucentra {

class HttpSession;
class LocalizationManager;

/// Translates texts on this machine: calls back once, on any thread, with one text a source text, or with nothing.
using OnDeviceTranslation = std::function<void(const QStringList &texts, const QString &target,
                                               std::function<void(std::optional<OnDeviceTranslations>)> completion)>;

/// What the manager can translate with. Except for the on-device one, every client runs on a worker, may block,
/// returns one string a block in their order, and throws `TranslationError`.
struct TranslationClients
{
    using Blocks = QList<TextBlock>;

    std::function<QStringList(const Blocks &, const QString &target)> googleFree;
    std::function<QStringList(const Blocks &, const QString &target, const QString &key)> googleCloud;
    std::function<QStringList(const Blocks &, const QString &key, const QString &region, const QString &target)>
        microsoft;
    std::function<QStringList(const Blocks &, const QString &key, const QString &target)> deepL;
    std::function<QStringList(const QString &key, const Blocks &, const QString &target)> geminiBlocks;
    /// Never throws: the translation, or the sentence for the user.
    std::function<QString(const QString &key, const QString &text, const QString &target)> geminiText;
    std::function<QStringList(const Blocks &, const QString &target, const LanguageModelProvider &)> modelBlocks;
    std::function<QString(const QString &text, const QString &target, const LanguageModelProvider &)> modelText;

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
