#pragma once

#include "Result.h"
#include "TextBlock.h"
#include "TranslationCache.h"
#include "TranslationClients.h"
#include "TranslationEngine.h"
#include "Translations.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace lucentra {

class KeychainStore;
class LocalizationManager;
class MainQueue;
class SettingsStore;

/// The entry point for all translations.
///
/// Has no state: each call reads engine, consent, models and target language from the stores, fails at once if the
/// consent is missing, and otherwise runs one client, after reading the engine's own key from the keychain. If the
/// keychain can't be read, the call fails, since without the key the text might go to another service. Calls may
/// overlap and don't wait for one another. The consent is checked again before each request.
class TranslationManager
{
public:
    /// Receivers of translated typed text besides the caller; each may be unset. Called on the main thread.
    struct Sinks
    {
        std::function<void(const QString &text)> copy; ///< copies it to the pasteboard
        std::function<void(const QString &original, const QString &translation)> record; ///< adds it to the history
    };

    TranslationManager(SettingsStore &settings, const KeychainStore &keychain, const LocalizationManager &texts,
                       MainQueue &mainQueue, TranslationClients clients, Sinks sinks);
    /// Cancels running requests. Pending completions of typed text are not called.
    ~TranslationManager();

    /// Translates the blocks' texts into the target language: one string per block in their order, with a note if none
    /// of them is translated, or a failure. No further request is made once `isWanted`, which is called on several
    /// threads, returns false. Blocks; any thread but the main one.
    Result<BlockTranslations> translate(const QList<TextBlock> &blocks, const std::function<bool()> &isWanted = {});

    /// The translation of a text that the current engine has made before, in this process. Nullopt if there is none, or
    /// if `translate` would be refused. Any thread.
    std::optional<QString> known(const QString &text);

    /// Whether a text is a phrase of programs that the current engine looks up. Any thread; doesn't wait.
    bool isPhrase(const QString &text) const;

    /// As `translate`, on a worker. Completes once: before it returns if the consent is missing, else on the main
    /// queue.
    void translateBlocks(const QList<TextBlock> &blocks, std::function<void(Result<BlockTranslations>)> completion);

    /// Translates typed text dictionary-style; text with Chinese characters into English. Completes once with the
    /// translation, or with a message that begins with "⚠️ " (a problem of the configuration) or "❌ " (a failed
    /// request); before it returns if the consent is missing, else on the main queue. Before that, the result is copied
    /// if the setting says so, and a translation is recorded. A newer text cancels the requests for older ones, which
    /// complete with an empty text.
    void translateText(const QString &text, std::function<void(TextTranslation)> completion);

    /// Ends all running requests at once; for quitting.
    void cancelAll();

private:
    struct CallFailure;
    struct TypedAnswer;
    template <typename Value>
    using Outcome = tl::expected<Value, CallFailure>;

    static Failure failureOf(const CallFailure &failed);
    EngineRequest currentRequest(const QStringList &texts) const;
    std::optional<CallFailure> refusal(TranslationEngine engine) const;
    QString consentMessage(TranslationEngine engine) const;
    bool lacksConsent(TranslationEngine engine) const;
    /// Moves all plaintext copies of a former version into the keychain, whichever engine they belong to. Doesn't touch
    /// the keychain if there are none. Blocks.
    void moveLegacyKeys() const;
    Outcome<QString> keyFor(TranslationEngine engine) const;
    /// The one path of all calls. Blocks.
    Outcome<BlockTranslations> outcomeOf(EngineRequest request, const std::function<bool()> &isWanted);
    Outcome<BlockTranslations> translateRemotely(const EngineRequest &request,
                                                 const std::function<bool()> &isWanted) const;
    Outcome<BlockTranslations> translateOnDevice(const EngineRequest &request,
                                                 const std::function<bool()> &isWanted) const;
    TypedAnswer answerTo(TranslationEngine engine, const Outcome<BlockTranslations> &outcome) const;
    void finishText(const QString &original, const TypedAnswer &answer,
                    const std::function<void(TextTranslation)> &completion);

    SettingsStore &m_settings;
    const KeychainStore &m_keychain;
    const LocalizationManager &m_texts;
    MainQueue &m_mainQueue;
    const TranslationClients m_clients;
    const Sinks m_sinks;
    TranslationCache m_cache;
    const std::shared_ptr<std::atomic<qint64>> m_lastText; ///< number of the newest typed text
    QObject m_alive;                                       ///< context of pending completions
    QThreadPool m_workers;                                 ///< last member: its destructor waits for running tasks
};

} // namespace lucentra
