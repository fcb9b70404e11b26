#include "TranslationManager.h"

#include "HttpSession.h"
#include "KeychainStore.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "OnDeviceNote.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"
#include "TargetLanguage.h"
#include "TranslationError.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Far more than requests can hang at once: a pass every second, each for the longest time-out of 45 seconds.
constexpr int mostRequests = 512;

const QString consentDomain = u"RemoteTranslationConsent"_s;
const QString onDeviceDomain = u"AppleTranslation"_s;
const QString onDeviceFailed = u"Apple 翻譯失敗"_s;
const QString onDeviceTooOld = u"Apple 內建翻譯需升級至 macOS 15"_s;
const QString onDeviceFailedReply = u"⚠️ Apple 翻譯失敗"_s;
const QString onDeviceTooOldReply = u"⚠️ Apple 內建翻譯需升級至 macOS 15"_s;

TextTranslation message(const QString &text)
{
    return {.text = text, .isMessage = true};
}

bool isCancelled(const Failure &failure)
{
    return failure.domain == u"HttpSession" && failure.code == int(TransportError::Kind::cancelled);
}

} // namespace

/// What a call reads from the stores.
struct TranslationManager::Request
{
    TranslationEngine engine;
    QString target;
    QString model;   ///< of a language model
    QString baseUrl; ///< of an endpoint of the user's own
    QString region;
    QString key{}; ///< of the engine, trimmed; empty where it has none

    bool lacksKey() const { return key.isEmpty() && engineEntry(engine).requiresKey; }
};

/// What became of a typed text.
struct TranslationManager::TextOutcome
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
    , m_self(std::make_shared<TranslationManager *>(this))
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

TranslationManager::Request TranslationManager::currentRequest() const
{
    const auto engine =
        translationEngine(m_settings.read(settings::translationEngine)).value_or(TranslationEngine::apple);
    const auto model = [this, engine] {
        switch (engine) {
        case TranslationEngine::openAI:
            return m_settings.read(settings::openAIModel);
        case TranslationEngine::anthropic:
            return m_settings.read(settings::anthropicModel);
        case TranslationEngine::compatible:
            return m_settings.read(settings::compatibleModel);
        default:
            return QString();
        }
    };
    return {.engine = engine,
            .target = m_settings.read(settings::targetLanguageCode),
            .model = model(),
            .baseUrl = m_settings.read(settings::compatibleBaseURL),
            .region = m_settings.read(settings::microsoftApiRegion)};
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

Result<QString> TranslationManager::keyFor(TranslationEngine engine) const
{
    const QString account = engineEntry(engine).account;
    const auto key = loadStoredAPIKey(m_settings, m_keychain, account, account);
    if (key && m_settings.value(account).toString().isEmpty()) // else the keychain has just refused
        moveLegacyKeys();
    if (key)
        return key->trimmed();
    return tl::unexpected(Failure{.domain = u"Keychain"_s,
                                  .code = key.error().code,
                                  .description = m_texts.localized(keychainAdvice(key.error()))});
}

BeforeRequest TranslationManager::permission(TranslationEngine engine, std::function<bool()> isWanted) const
{
    return [this, engine, isWanted = std::move(isWanted)] {
        if (isWanted && !isWanted())
            throw TransportError(TransportError::Kind::cancelled);
        if (lacksConsent(engine))
            throw ProviderFailure(consentDomain, 1, consentMessage(engine));
    };
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

LanguageModelProvider TranslationManager::languageModelProvider(const Request &request)
{
    if (request.engine == TranslationEngine::openAI)
        return OpenAIProvider{request.key, request.model};
    if (request.engine == TranslationEngine::anthropic)
        return AnthropicProvider{request.key, request.model};
    return CompatibleProvider{request.key, request.model, request.baseUrl};
}

bool TranslationManager::supportsOnDevice() const
{
    return !m_clients.supportsOnDevice || m_clients.supportsOnDevice();
}

void TranslationManager::translateOnDevice(const QStringList &texts, const QString &target,
                                           std::function<void(std::optional<OnDeviceTranslations>)> completion,
                                           std::function<bool()> isWanted)
{
    const auto posted = [&queue = m_mainQueue,
                         completion = std::move(completion)](const std::optional<OnDeviceTranslations> &result) {
        queue.post([completion, result] { completion(result); });
    };
    if (m_clients.onDevice)
        m_clients.onDevice(texts, target, posted, std::move(isWanted));
    else
        posted(std::nullopt);
}

QStringList TranslationManager::sendBlocks(const Request &request, const BeforeRequest &mayBeSent,
                                           const QList<TextBlock> &blocks) const
{
    switch (request.engine) {
    case TranslationEngine::microsoft:
        return m_clients.microsoft(mayBeSent, blocks, request.key, request.region, request.target);
    case TranslationEngine::customAPI:
        return m_clients.geminiBlocks(mayBeSent, request.key, blocks, request.target);
    case TranslationEngine::deepl:
        return m_clients.deepL(mayBeSent, blocks, request.key, request.target);
    case TranslationEngine::openAI:
    case TranslationEngine::anthropic:
    case TranslationEngine::compatible:
        return m_clients.modelBlocks(mayBeSent, blocks, request.target, languageModelProvider(request));
    case TranslationEngine::apple: // is asked where the call is made
    case TranslationEngine::free:
        break;
    }
    if (request.key.isEmpty())
        return m_clients.googleFree(mayBeSent, blocks, request.target);
    return m_clients.googleCloud(mayBeSent, blocks, request.target, request.key);
}

Result<BlockTranslations> TranslationManager::blocksFrom(Request request, const BeforeRequest &mayBeSent,
                                                         const QList<TextBlock> &blocks) const
{
    const auto key = keyFor(request.engine);
    if (!key)
        return tl::unexpected(key.error());
    request.key = *key;
    if (request.lacksKey()) {
        const EngineEntry &entry = engineEntry(request.engine);
        const QString label = entry.label.toString();
        return tl::unexpected(Failure{.domain = label,
                                      .code = -1,
                                      .description = m_texts.formatted(entry.missingKeyText.toString(),
                                                                       labelBeforeAPI(m_texts.localized(label)))});
    }
    try {
        return BlockTranslations{.texts = sendBlocks(request, mayBeSent, blocks)};
    } catch (...) {
        return tl::unexpected(failureOfCurrentException(m_texts));
    }
}

void TranslationManager::translateBlocks(const QList<TextBlock> &blocks,
                                         std::function<void(Result<BlockTranslations>)> completion,
                                         std::function<bool()> isWanted)
{
    const Request request = currentRequest();
    const auto refuse = [&](const QString &domain, int code, const QString &description) {
        completion(tl::unexpected(Failure{.domain = domain, .code = code, .description = description}));
    };
    if (request.engine == TranslationEngine::apple) {
        m_workers.start([this] { moveLegacyKeys(); });
        if (!supportsOnDevice())
            return refuse(onDeviceDomain, -1, m_texts.localized(onDeviceTooOld));
        const Failure failed{.domain = onDeviceDomain, .code = -1, .description = m_texts.localized(onDeviceFailed)};
        QStringList texts;
        for (const TextBlock &block : blocks)
            texts.append(block.text);
        const auto finish = [&lookup = m_texts, texts, completion, failed](const auto &translations) {
            if (!translations)
                return completion(tl::unexpected(failed));
            completion(BlockTranslations{.texts = translations->texts,
                                         .note = onDeviceNote(texts, *translations, lookup),
                                         .outcomes = translations->outcomes});
        };
        return translateOnDevice(texts, request.target, finish, std::move(isWanted));
    }
    if (lacksConsent(request.engine))
        return refuse(consentDomain, 1, consentMessage(request.engine));
    m_workers.start([this, request, blocks, mayBeSent = permission(request.engine, std::move(isWanted)),
                     completion = std::move(completion)] {
        m_mainQueue.post([completion, outcome = blocksFrom(request, mayBeSent, blocks)] { completion(outcome); });
    });
}

TextTranslation TranslationManager::sendText(const Request &request, const BeforeRequest &mayBeSent,
                                             const QString &text) const
{
    switch (request.engine) {
    case TranslationEngine::customAPI:
        return m_clients.geminiText(mayBeSent, request.key, text, request.target);
    case TranslationEngine::openAI:
    case TranslationEngine::anthropic:
    case TranslationEngine::compatible:
        return {.text = m_clients.modelText(mayBeSent, text, request.target, languageModelProvider(request))};
    default:
        return {.text = sendBlocks(request, mayBeSent, {TextBlock{.text = text, .normBox = {}}}).value(0)};
    }
}

TranslationManager::TextOutcome TranslationManager::textFrom(Request request, const BeforeRequest &mayBeSent,
                                                             const QString &text) const
{
    const auto key = keyFor(request.engine);
    if (!key)
        return {.result = message(u"⚠️ "_s + key.error().description), .mayBeCopied = false};
    request.key = *key;
    if (request.lacksKey()) // Gemini's is the one missing key that is neither copied nor recorded
        return {.result = message(m_texts.localized(engineEntry(request.engine).missingKeyReply.toString())),
                .mayBeCopied = request.engine != TranslationEngine::customAPI};
    try {
        return {.result = sendText(request, mayBeSent, text)};
    } catch (...) {
        const Failure failure = failureOfCurrentException(m_texts);
        if (isCancelled(failure))
            return {};
        if (failure.domain == consentDomain)
            return {.result = message(failure.description), .mayBeCopied = false};
        return {.result = message(m_texts.formatted(u"❌ 翻譯失敗：%@"_s, failure.description))};
    }
}

void TranslationManager::translateText(const QString &text, std::function<void(TextTranslation)> completion)
{
    const auto isWanted = [last = m_lastText, number = ++*m_lastText] { return *last == number; };
    Request request = currentRequest();
    if (lacksConsent(request.engine))
        return completion(message(consentMessage(request.engine)));
    if (containsHanCharacters(text))
        request.target = u"en-US"_s;
    if (request.engine == TranslationEngine::apple) {
        if (!supportsOnDevice())
            return finishText(text, {.result = message(m_texts.localized(onDeviceTooOldReply))}, completion);
        const TextTranslation failed = message(m_texts.localized(onDeviceFailedReply));
        const auto finish = postedFinish(text, std::move(completion));
        const auto translated = [&lookup = m_texts, text, finish, failed](const auto &translations) {
            if (translations && translations->isCancelled)
                return finish({});
            const QString translation = translations ? translations->texts.value(0) : QString();
            if (translation.isEmpty())
                return finish({.result = failed});
            finish({.result = {.text = translation, .note = onDeviceNote({text}, *translations, lookup)}});
        };
        return translateOnDevice({text}, request.target, translated, isWanted);
    }
    m_workers.start(
        [this, request, text, mayBeSent = permission(request.engine, isWanted),
         finish = postedFinish(text, std::move(completion))] { finish(textFrom(request, mayBeSent, text)); });
}

std::function<void(const TranslationManager::TextOutcome &)>
TranslationManager::postedFinish(const QString &original, std::function<void(TextTranslation)> completion)
{
    return [&queue = m_mainQueue, weak = std::weak_ptr(m_self), original,
            completion = std::move(completion)](const TextOutcome &outcome) {
        queue.post([weak, original, completion, outcome] {
            if (const auto self = weak.lock())
                (*self)->finishText(original, outcome, completion);
        });
    };
}

void TranslationManager::finishText(const QString &original, const TextOutcome &outcome,
                                    const std::function<void(TextTranslation)> &completion)
{
    const QString &text = outcome.result.text;
    if (!text.isEmpty() && outcome.mayBeCopied) {
        if (m_sinks.copy && m_settings.read(settings::autoCopy))
            m_sinks.copy(text);
        const bool isMessage = outcome.result.isMessage || text.startsWith(u"⚠️") || text.startsWith(u"❌");
        if (m_sinks.record && !isMessage)
            m_sinks.record(original, text);
    }
    completion(outcome.result);
}

} // namespace lucentra
