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

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Far more than requests can hang at once: a pass every second, each for the longest time-out of 45 seconds.
constexpr int mostRequests = 512;

const QString onDeviceDomain = u"AppleTranslation"_s;
const QString onDeviceFailed = u"Apple 翻譯失敗"_s;
const QString onDeviceTooOld = u"Apple 內建翻譯需升級至 macOS 15"_s;
const QString onDeviceFailedReply = u"⚠️ Apple 翻譯失敗"_s;
const QString onDeviceTooOldReply = u"⚠️ Apple 內建翻譯需升級至 macOS 15"_s;

} // namespace

/// What a call reads from the stores.
struct TranslationManager::Request
{
    TranslationEngine engine;
    QString key; ///< of the engine, trimmed; empty where it has none
    QString target;

    bool lacksKey() const { return key.isEmpty() && engineEntry(engine).requiresKey; }
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
    if (m_clients.cancelAll)
        m_clients.cancelAll();
}

TranslationManager::Request TranslationManager::currentRequest() const
{
    const auto engine =
        translationEngine(m_settings.read(settings::translationEngine)).value_or(TranslationEngine::apple);
    // All of them, whichever the engine: legacy copies leave the preferences with the first request.
    const QHash<QString, QString> keys = loadStoredAPIKeys(m_settings, m_keychain, apiKeyAccounts()).keys;
    return {.engine = engine,
            .key = keys.value(engineEntry(engine).account).trimmed(),
            .target = m_settings.read(settings::targetLanguageCode)};
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

LanguageModelProvider TranslationManager::languageModelProvider(const Request &request) const
{
    if (request.engine == TranslationEngine::openAI)
        return OpenAIProvider{request.key, m_settings.read(settings::openAIModel)};
    if (request.engine == TranslationEngine::anthropic)
        return AnthropicProvider{request.key, m_settings.read(settings::anthropicModel)};
    return CompatibleProvider{request.key, m_settings.read(settings::compatibleModel),
                              m_settings.read(settings::compatibleBaseURL)};
}

bool TranslationManager::supportsOnDevice() const
{
    return !m_clients.supportsOnDevice || m_clients.supportsOnDevice();
}

void TranslationManager::translateOnDevice(const QStringList &texts, const QString &target,
                                           std::function<void(std::optional<OnDeviceTranslations>)> completion)
{
    const auto posted = [&queue = m_mainQueue,
                         completion = std::move(completion)](const std::optional<OnDeviceTranslations> &result) {
        queue.post([completion, result] { completion(result); });
    };
    if (m_clients.onDevice)
        m_clients.onDevice(texts, target, posted);
    else
        posted(std::nullopt);
}

std::function<QStringList()> TranslationManager::blockWork(const Request &request, const QList<TextBlock> &blocks) const
{
    const TranslationClients &clients = m_clients;
    switch (request.engine) {
    case TranslationEngine::microsoft:
        return [&clients, request, blocks, region = m_settings.read(settings::microsoftApiRegion)] {
            return clients.microsoft(blocks, request.key, region, request.target);
        };
    case TranslationEngine::customAPI:
        return [&clients, request, blocks] { return clients.geminiBlocks(request.key, blocks, request.target); };
    case TranslationEngine::deepl:
        return [&clients, request, blocks] { return clients.deepL(blocks, request.key, request.target); };
    case TranslationEngine::openAI:
    case TranslationEngine::anthropic:
    case TranslationEngine::compatible:
        return [&clients, request, blocks, provider = languageModelProvider(request)] {
            return clients.modelBlocks(blocks, request.target, provider);
        };
    case TranslationEngine::apple: // has no work of its own: it is asked where the call is made
    case TranslationEngine::free:
        break;
    }
    if (request.key.isEmpty())
        return [&clients, request, blocks] { return clients.googleFree(blocks, request.target); };
    return [&clients, request, blocks] { return clients.googleCloud(blocks, request.target, request.key); };
}

void TranslationManager::translateBlocks(const QList<TextBlock> &blocks,
                                         std::function<void(Result<BlockTranslations>)> completion)
{
    const Request request = currentRequest();
    const auto refuse = [&](const QString &domain, int code, const QString &description) {
        completion(tl::unexpected(Failure{.domain = domain, .code = code, .description = description}));
    };
    if (request.engine == TranslationEngine::apple) {
        if (!supportsOnDevice())
            return refuse(onDeviceDomain, -1, m_texts.localized(onDeviceTooOld));
        const Failure failed{.domain = onDeviceDomain, .code = -1, .description = m_texts.localized(onDeviceFailed)};
        QStringList texts;
        for (const TextBlock &block : blocks)
            texts.append(block.text);
        return translateOnDevice(texts, request.target,
                                 [&lookup = m_texts, texts, completion, failed](const auto &translations) {
                                     if (!translations)
                                         return completion(tl::unexpected(failed));
                                     completion(BlockTranslations{.texts = translations->texts,
                                                                  .note = onDeviceNote(texts, *translations, lookup),
                                                                  .outcomes = translations->outcomes});
                                 });
    }
    if (lacksConsent(request.engine))
        return refuse(u"RemoteTranslationConsent"_s, 1, consentMessage(request.engine));
    if (request.lacksKey()) {
        const EngineEntry &entry = engineEntry(request.engine);
        const QString label = entry.label.toString();
        return refuse(label, -1, m_texts.formatted(entry.missingKeyText.toString(), m_texts.localized(label)));
    }
    m_workers.start([this, work = blockWork(request, blocks), completion = std::move(completion)] {
        Result<BlockTranslations> outcome;
        try {
            outcome = BlockTranslations{.texts = work()};
        } catch (...) {
            outcome = tl::unexpected(failureOfCurrentException(m_texts));
        }
        m_mainQueue.post([completion, outcome] { completion(outcome); });
    });
}

std::function<QString()> TranslationManager::textWork(const Request &request, const QString &text) const
{
    const TranslationClients &clients = m_clients;
    switch (request.engine) {
    case TranslationEngine::customAPI:
        return [&clients, request, text] { return clients.geminiText(request.key, text, request.target); };
    case TranslationEngine::openAI:
    case TranslationEngine::anthropic:
    case TranslationEngine::compatible:
        return [&clients, request, text, provider = languageModelProvider(request)] {
            return clients.modelText(text, request.target, provider);
        };
    default:
        return [work = blockWork(request, {TextBlock{.text = text, .normBox = {}}})] { return work().value(0); };
    }
}

void TranslationManager::translateText(const QString &text, std::function<void(TextTranslation)> completion)
{
    Request request = currentRequest();
    if (lacksConsent(request.engine))
        return completion({.text = consentMessage(request.engine)});
    if (containsHanCharacters(text))
        request.target = u"en-US"_s;
    if (request.engine == TranslationEngine::apple) {
        if (!supportsOnDevice())
            return finishText(text, {.text = m_texts.localized(onDeviceTooOldReply)}, completion);
        const QString failed = m_texts.localized(onDeviceFailedReply);
        const auto finish = postedFinish(text, std::move(completion));
        return translateOnDevice(
            {text}, request.target, [&lookup = m_texts, text, finish, failed](const auto &translations) {
                const QString translation = translations ? translations->texts.value(0) : QString();
                if (translation.isEmpty())
                    return finish({.text = failed});
                finish({.text = translation, .note = onDeviceNote({text}, *translations, lookup)});
            });
    }
    if (request.lacksKey()) {
        const QString reply = m_texts.localized(engineEntry(request.engine).missingKeyReply.toString());
        if (request.engine == TranslationEngine::customAPI)
            return completion({.text = reply}); // the one missing key that is neither copied nor recorded
        return finishText(text, {.text = reply}, completion);
    }
    m_workers.start([this, work = textWork(request, text), finish = postedFinish(text, std::move(completion))] {
        try {
            finish({.text = work()});
        } catch (...) {
            finish({.text = m_texts.formatted(u"❌ 翻譯失敗：%@"_s, failureOfCurrentException(m_texts).description)});
        }
    });
}

std::function<void(const TextTranslation &)>
TranslationManager::postedFinish(const QString &original, std::function<void(TextTranslation)> completion)
{
    return [&queue = m_mainQueue, weak = std::weak_ptr(m_self), original,
            completion = std::move(completion)](const TextTranslation &result) {
        queue.post([weak, original, completion, result] {
            if (const auto self = weak.lock())
                (*self)->finishText(original, result, completion);
        });
    };
}

void TranslationManager::finishText(const QString &original, const TextTranslation &result,
                                    const std::function<void(TextTranslation)> &completion)
{
    const QString &text = result.text;
    if (!text.isEmpty()) {
        if (m_sinks.copy && m_settings.read(settings::autoCopy))
            m_sinks.copy(text);
        const bool isMessage = text.startsWith(u"⚠️") || text.startsWith(u"❌");
        if (m_sinks.record && !isMessage)
            m_sinks.record(original, text);
    }
    completion(result);
}

} // namespace lucentra
