#pragma once

#include "Result.h"
#include "TranslationClients.h"
#include "TranslationEngine.h"
#include "Translations.h"

#include <QHash>
#include <QThreadPool>

#include <functional>
#include <memory>

namespace lucentra {

class KeychainStore;
class LocalizationManager;
class MainQueue;
class SettingsStore;

/// The one entry point through which the program translates.
///
/// It keeps nothing between calls: each call reads engine, keys, consent, models and target language from the stores,
/// refuses at once where something is missing, and otherwise starts one client on a worker. Calls may overlap; none
/// waits for another. Whether an outcome is still wanted is the caller's business.
class TranslationManager
{
public:
    /// Where finished typed text goes besides to its caller; each may be unset. Called on the main thread.
    struct Sinks
    {
        std::function<void(const QString &text)> copy;                                   ///< puts it on the pasteboard
        std::function<void(const QString &original, const QString &translation)> record; ///< adds it to the history
    };

    /// What is referred to must outlive the manager, and the main queue every client that still calls back.
    TranslationManager(SettingsStore &settings, const KeychainStore &keychain, const LocalizationManager &texts,
                       MainQueue &mainQueue, TranslationClients clients, Sinks sinks);
    /// Cancels what is under way; what typed text is still waiting for is dropped.
    ~TranslationManager();

    /// Translates the blocks' texts into the target language: one string a block, in their order, with a note where
    /// none of them is new, or the failure.
    /// Any thread. Completes once: before it returns where the configuration is at fault, else on the main queue.
    void translateBlocks(const QList<TextBlock> &blocks, std::function<void(Result<BlockTranslations>)> completion);

    /// Translates typed text dictionary-style, text with Chinese characters into English. Main thread. Completes once
    /// with the translation, or with a sentence that begins with "⚠️ " (the configuration is at fault; before it
    /// returns) or "❌ " (the request failed); except for the former, on the main queue. Before that the result is
    /// copied where the setting wants it, and a translation is recorded.
    void translateText(const QString &text, std::function<void(TextTranslation)> completion);

    /// Ends every request under way at once; for when the program quits.
    void cancelAll();

private:
    struct Request;

    Request currentRequest() const;
    QString consentMessage(TranslationEngine engine) const;
    bool lacksConsent(TranslationEngine engine) const;
    LanguageModelProvider languageModelProvider(const Request &request) const;
    bool supportsOnDevice() const;
    void translateOnDevice(const QStringList &texts, const QString &target,
                           std::function<void(std::optional<OnDeviceTranslations>)> completion);
    std::function<QStringList()> blockWork(const Request &request, const QList<TextBlock> &blocks) const;
    std::function<QString()> textWork(const Request &request, const QString &text) const;
    void finishText(const QString &original, const TextTranslation &result,
                    const std::function<void(TextTranslation)> &completion);
    /// A completion for typed text that may be called on any thread, and does nothing once the manager is gone.
    std::function<void(const TextTranslation &)> postedFinish(const QString &original,
                                                              std::function<void(TextTranslation)> completion);

    SettingsStore &m_settings;
    const KeychainStore &m_keychain;
    const LocalizationManager &m_texts;
    MainQueue &m_mainQueue;
    const TranslationClients m_clients;
    const Sinks m_sinks;
    std::shared_ptr<TranslationManager *> m_self; ///< held weakly by what waits; looked at on the main thread only
    QThreadPool m_workers;                        ///< last: its destruction waits for what still runs
};

} // namespace lucentra
