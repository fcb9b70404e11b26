#include "TranslationManager.h"

#include "KeychainStore.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "OnDeviceNote.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"
#include "TargetLanguage.h"
#include "TranslationError.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Far more than requests can hang at once: a pass every second, each for the longest time-out of 45 seconds.
constexpr int mostRequests = 512;

/// The consent was withdrawn between two requests.
class ConsentMissing : public TranslationError
{
public:
    explicit ConsentMissing(const QString &message)
        : TranslationError(u"RemoteTranslationConsent"_s, 1, message)
    {
    }
};

QStringList textsOf(const QList<TextBlock> &blocks)
{
    QStringList texts;
    for (const TextBlock &block : blocks)
        texts.append(block.text);
    return texts;
}

/// What a translation depends on besides the text.
QString engineKey(const EngineRequest &request)
{
    return QStringList{QString::number(int(request.engine)), request.target, request.model, request.baseUrl}.join(u'\n');
}

Failure onDeviceFailure(const QString &description)
{
    return {.domain = u"AppleTranslation"_s, .code = -1, .description = description};
}

} // namespace

/// Why a call has no translation.
struct TranslationManager::CallFailure
{
    enum class Kind { Consent, OnDevice, Keychain, MissingKey, Client, AnsweredByClient, Cancelled };

    Kind kind;
    Failure failure;
};

Failure TranslationManager::failureOf(const CallFailure &failed)
{
    return failed.failure;
}

/// What typed text is answered with.
struct TranslationManager::TypedAnswer
{
    TextTranslation result;
    bool mayBeCopied = true;
};

TranslationManager::TranslationManager(SettingsStore &settings, const KeychainStore &keychain,
                                       const LocalizationManager &texts, MainQueue &mainQueue,
                                       TranslationClients clients, Sinks sinks)
    : m_settings(settings)
    , m_keychain(keychain)
    , m_texts(texts)
    , m_mainQueue(mainQueue)
    , m_clients(std::move(clients))
    , m_sinks(std::move(sinks))
    , m_lastText(std::make_shared<std::atomic<qint64>>(0))
{
    m_workers.setMaxThreadCount(mostRequests);
}

TranslationManager::~TranslationManager()
{
    cancelAll();
}

void TranslationManager::cancelAll()
{
    ++*m_lastText;
    if (m_clients.cancelAll)
        m_clients.cancelAll();
}

EngineRequest TranslationManager::currentRequest(const QStringList &texts) const
{
    EngineRequest request{.engine = translationEngine(m_settings.read(settings::translationEngine))
                                        .value_or(TranslationEngine::apple),
                          .texts = texts,
                          .target = m_settings.read(settings::targetLanguageCode)};
    for (const EngineField &field : engineEntry(request.engine).fields)
        request.*field.value = m_settings.read(field.setting);
    return request;
}

bool TranslationManager::lacksConsent(TranslationEngine engine) const
{
    return engine != TranslationEngine::apple && !m_settings.read(settings::consentKey(qint64(engine)));
}

QString TranslationManager::consentMessage(TranslationEngine engine) const
{
    const QString service = remoteProviderName(engine, m_texts).value_or(m_texts.localized(u"所選服務"_s));
    return m_texts.formatted(u"⚠️ 請先在翻譯設定中允許將文字傳送至 %@。"_s, service);
}

std::optional<TranslationManager::CallFailure> TranslationManager::refusal(TranslationEngine engine) const
{
    using Kind = CallFailure::Kind;
    if (engine == TranslationEngine::apple && m_clients.supportsOnDevice && !m_clients.supportsOnDevice())
        return CallFailure{Kind::OnDevice, onDeviceFailure(m_texts.localized(u"Apple 內建翻譯需升級至 macOS 15"_s))};
    if (lacksConsent(engine))
        return CallFailure{Kind::Consent, ConsentMissing(consentMessage(engine)).failure(m_texts)};
    return std::nullopt;
}

void TranslationManager::moveLegacyKeys() const
{
    for (const QString &account : apiKeyAccounts()) {
        if (m_settings.contains(account))
            loadStoredAPIKey(m_settings, m_keychain, account, account);
        if (!m_settings.value(account).toString().isEmpty())
            return; // the keychain refuses; it refuses the others, too
    }
}

TranslationManager::Outcome<QString> TranslationManager::keyFor(TranslationEngine engine) const
{
    const EngineEntry &entry = engineEntry(engine);
    const auto stored = loadStoredAPIKey(m_settings, m_keychain, entry.account, entry.account);
    if (stored && m_settings.value(entry.account).toString().isEmpty()) // else the keychain has just refused
        moveLegacyKeys();
    if (!stored)
        return tl::unexpected(CallFailure{CallFailure::Kind::Keychain,
                                          {.domain = u"Keychain"_s,
                                           .code = stored.error().code,
                                           .description = keychainAdvice(stored.error(), [this](const QString &key) { return m_texts.localized(key); })}});
    if (const QString key = stored->trimmed(); !key.isEmpty() || !entry.requiresKey)
        return key;
    const QString label = entry.label.toString();
    return tl::unexpected(
        CallFailure{CallFailure::Kind::MissingKey,
                    {.domain = label,
                     .code = -1,
                     .description = m_texts.formatted(entry.missingKeyText.toString(),
                                                      labelBeforeAPI(m_texts.localized(label)))}});
}

TranslationManager::Outcome<BlockTranslations>
TranslationManager::translateRemotely(const EngineRequest &request, const std::function<bool()> &isWanted) const
{
    using Kind = CallFailure::Kind;
    const auto mayBeSent = [&] {
        if (isWanted && !isWanted())
            throw TransportError(TransportError::Kind::cancelled);
        if (lacksConsent(request.engine))
            throw ConsentMissing(consentMessage(request.engine));
    };
    const auto failed = [&](Kind kind) {
        return tl::unexpected(CallFailure{kind, failureOfCurrentException(m_texts)});
    };
    try {
        return BlockTranslations{.texts = m_clients.remote(request, mayBeSent)};
    } catch (const ConsentMissing &) {
        return failed(Kind::Consent);
    } catch (const TypedTextError &) {
        return failed(Kind::AnsweredByClient);
    } catch (const TransportError &error) {
        return failed(error.kind() == TransportError::Kind::cancelled ? Kind::Cancelled : Kind::Client);
    } catch (...) {
        return failed(Kind::Client);
    }
}

TranslationManager::Outcome<BlockTranslations>
TranslationManager::translateOnDevice(const EngineRequest &request, const std::function<bool()> &isWanted) const
{
    using Kind = CallFailure::Kind;
    const auto translations = m_clients.onDevice ? m_clients.onDevice(request, isWanted) : std::nullopt;
    const auto failed = [&](Kind kind) {
        return tl::unexpected(CallFailure{kind, onDeviceFailure(m_texts.localized(u"Apple 翻譯失敗"_s))});
    };
    if (!translations || (request.isTyped && translations->texts.value(0).isEmpty()))
        return failed(Kind::OnDevice);
    if (isWanted && !isWanted() && translations->texts == request.texts)
        return failed(Kind::Cancelled);
    return BlockTranslations{.texts = translations->texts,
                             .note = onDeviceNote(request.texts, *translations, m_texts),
                             .outcomes = translations->outcomes};
}

TranslationManager::Outcome<BlockTranslations> TranslationManager::outcomeOf(EngineRequest request,
                                                                             const std::function<bool()> &isWanted)
{
    if (const auto refused = refusal(request.engine))
        return tl::unexpected(*refused);
    if (request.engine == TranslationEngine::apple) {
        m_workers.start([this] { moveLegacyKeys(); });
        return translateOnDevice(request, isWanted);
    }
    const auto key = keyFor(request.engine);
    if (!key)
        return tl::unexpected(key.error());
    request.key = *key;
    return translateRemotely(request, isWanted);
}

Result<BlockTranslations> TranslationManager::translate(const QList<TextBlock> &blocks,
                                                        const std::function<bool()> &isWanted)
{
    const EngineRequest request = currentRequest(textsOf(blocks));
    const auto outcome = outcomeOf(request, isWanted);
    for (qsizetype i = 0; outcome && i < std::min(request.texts.size(), outcome->texts.size()); ++i) {
        const bool isMade =
            outcome->outcomes.isEmpty() || outcome->outcomes.value(i).kind == OnDeviceOutcome::Kind::Translated;
        if (isMade)
            m_cache.insert(engineKey(request), request.texts[i], outcome->texts[i]);
    }
    return outcome.map_error(failureOf);
}

std::optional<QString> TranslationManager::known(const QString &text)
{
    const EngineRequest request = currentRequest({});
    return refusal(request.engine) ? std::nullopt : m_cache.find(engineKey(request), text);
}

bool TranslationManager::isPhrase(const QString &text) const
{
    const EngineRequest request = currentRequest({});
    return request.engine == TranslationEngine::apple && m_clients.isPhrase && m_clients.isPhrase(text, request.target);
}

void TranslationManager::translateBlocks(const QList<TextBlock> &blocks,
                                         std::function<void(Result<BlockTranslations>)> completion)
{
    const EngineRequest request = currentRequest(textsOf(blocks));
    if (const auto refused = refusal(request.engine))
        return completion(tl::unexpected(refused->failure));
    m_workers.start([this, request, completion = std::move(completion)] {
        m_mainQueue.post([completion, outcome = outcomeOf(request, {}).map_error(failureOf)] { completion(outcome); });
    });
}

TranslationManager::TypedAnswer TranslationManager::answerTo(TranslationEngine engine,
                                                             const Outcome<BlockTranslations> &outcome) const
{
    using Kind = CallFailure::Kind;
    if (outcome)
        return {.result = {.text = outcome->texts.value(0), .note = outcome->note}};
    const QString &description = outcome.error().failure.description;
    const auto message = [](const QString &text, bool mayBeCopied = true) {
        return TypedAnswer{.result = {.text = text, .isMessage = true}, .mayBeCopied = mayBeCopied};
    };
    switch (outcome.error().kind) {
    case Kind::Consent: // the sentence begins with the sign
        return message(description, false);
    case Kind::OnDevice:
        return message(u"⚠️ "_s + description);
    case Kind::Keychain:
        return message(u"⚠️ "_s + description, false);
    case Kind::MissingKey: { // only Gemini's isn't copied
        const QString reply = engineEntry(engine).missingKeyReply.toString();
        return message(reply.isEmpty() ? u"⚠️ "_s + description : m_texts.localized(reply),
                       engine != TranslationEngine::customAPI);
    }
    case Kind::AnsweredByClient:
        return message(description);
    case Kind::Cancelled:
        return {};
    case Kind::Client:
        break;
    }
    return message(m_texts.formatted(u"❌ 翻譯失敗：%@"_s, description));
}

void TranslationManager::translateText(const QString &text, std::function<void(TextTranslation)> completion)
{
    const auto isWanted = [last = m_lastText, number = ++*m_lastText] { return *last == number; };
    EngineRequest request = currentRequest({text});
    request.isTyped = true;
    if (const auto refused = refusal(request.engine))
        return finishText(text, answerTo(request.engine, tl::unexpected(*refused)), completion);
    if (containsHanCharacters(text))
        request.target = u"en-US"_s;
    m_workers.start([this, alive = QPointer<QObject>(&m_alive), request, isWanted, completion = std::move(completion)] {
        m_mainQueue.post(alive, [this, completion, text = request.texts.first(),
                                 answer = answerTo(request.engine, outcomeOf(request, isWanted))] {
            finishText(text, answer, completion);
        });
    });
}

void TranslationManager::finishText(const QString &original, const TypedAnswer &answer,
                                    const std::function<void(TextTranslation)> &completion)
{
    const QString &text = answer.result.text;
    if (!text.isEmpty() && answer.mayBeCopied) {
        if (m_sinks.copy && m_settings.read(settings::autoCopy))
            m_sinks.copy(text);
        // A translation that begins like a message isn't recorded either.
        const bool isMessage = answer.result.isMessage || text.startsWith(u"⚠️") || text.startsWith(u"❌");
        if (m_sinks.record && !isMessage)
            m_sinks.record(original, text);
    }
    completion(answer.result);
}

} // namespace lucentra
