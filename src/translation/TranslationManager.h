#pragma once

#include "Result.h"
#include "TranslationClients.h"
#include "TranslationEngine.h"
#include "Translations.h"

#include <QHash>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>

namespace lucentra {

class KeychainStore;
class LocalizationManager;
class MainQueue;
class SettingsStore;

/// The one entry point through which the program translates.
///
/// It keeps nothing between calls: each call reads engine, consent, models and target language from the stores, refuses
/// at once where the consent is missing, and otherwise starts one client on a worker, which reads the engine's own key
/// from the keychain first. A keychain that can't be read ends the call: without the key the text might go elsewhere.
/// Calls may overlap; none waits for another. Consent is looked at once more before every single request.
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
    /// none of them is new, or the failure. No further request is made once `isWanted`, if given, returns false; it is
    /// called on workers.
    /// Any thread. Completes once: before it returns where the consent is missing, else on the main queue.
    void translateBlocks(const QList<TextBlock> &blocks, std::function<void(Result<BlockTranslations>)> completion,
                         std::function<bool()> isWanted = {});

    /// Translates typed text dictionary-style, text with Chinese characters into English. Main thread. Completes once
    /// with the translation, or with a message that begins with "⚠️ " (the configuration is at fault) or "❌ "
    /// (the request failed); before it returns where the consent is missing, else on the main queue. Before that the
    /// result is copied where the setting wants it, and a translation is recorded. No further request is made for a
    /// text once there is a newer one; what was cancelled completes with an empty text.
    void translateText(const QString &text, std::function<void(TextTranslation)> completion);

    /// Ends every request under way at once; for when the program quits.
    void cancelAll();

private:
    struct Request;
    struct TextOutcome;

    Request currentRequest() const;
    QString consentMessage(TranslationEngine engine) const;
    bool lacksConsent(TranslationEngine engine) const;
    static LanguageModelProvider languageModelProvider(const Request &request);
    bool supportsOnDevice() const;
    void translateOnDevice(const QStringList &texts, const QString &target,
                           std::function<void(std::optional<OnDeviceTranslations>)> completion,
                           std::function<bool()> isWanted);
    /// Moves all plaintext copies of a former version into the keychain, whichever engine they belong to. Doesn't touch
    /// the keychain if there are none. Blocks.
    void moveLegacyKeys() const;
    Result<QString> keyFor(TranslationEngine engine) const;
    BeforeRequest permission(TranslationEngine engine, std::function<bool()> isWanted) const;
    QStringList sendBlocks(const Request &request, const BeforeRequest &mayBeSent,
                           const QList<TextBlock> &blocks) const;
    TextTranslation sendText(const Request &request, const BeforeRequest &mayBeSent, const QString &text) const;
    Result<BlockTranslations> blocksFrom(Request request, const BeforeRequest &mayBeSent,
                                         const QList<TextBlock> &blocks) const;
    TextOutcome textFrom(Request request, const BeforeRequest &mayBeSent, const QString &text) const;
    void finishText(const QString &original, const TextOutcome &outcome,
                    const std::function<void(TextTranslation)> &completion);
    /// A completion for typed text that may be called on any thread, and does nothing once the manager is gone.
    std::function<void(const TextOutcome &)> postedFinish(const QString &original,
                                                          std::function<void(TextTranslation)> completion);

    SettingsStore &m_settings;
    const KeychainStore &m_keychain;
    const LocalizationManager &m_texts;
    MainQueue &m_mainQueue;
    const TranslationClients m_clients;
    const Sinks m_sinks;
    const std::shared_ptr<std::atomic<qint64>> m_lastText; ///< number of the newest typed text
    std::shared_ptr<TranslationManager *> m_self; ///< held weakly by what waits; looked at on the main thread only
    QThreadPool m_workers;                        ///< last: its destruction waits for what still runs
};

} // namespace lucentra
